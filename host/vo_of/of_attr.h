/// Attribute of a scene item.
#pragma once

#include "vo_core/core_array.h"
#include "vo_core/core_base_object.h"
#include "vo_core/core_set.h"
#include "vo_core/core_string.h"

class OfContext;

/// A named list of texts. Attributes whose texts are paths are found through a registry of the process: they enter it
/// on construction and leave it on destruction, from any thread. An attribute itself is used by one thread at a time.
class VO_HOST_EXPORT OfAttr : public CoreBaseObject
{
public:
    enum Type {
        TYPE_STRING = 0,
        TYPE_PATH = 1, ///< registered
    };
    /// How the attribute is shown to users.
    enum VisualHint {
        VISUAL_HINT_DEFAULT = 0,
        VISUAL_HINT_FOLDER = 1,
        VISUAL_HINT_FILE_OPEN = 2, ///< path of a file that is read
        VISUAL_HINT_FILE_SAVE = 3, ///< path of a file that is written
    };
    /// Which of the attribute's values.
    enum ValuePage {
        VALUE_PAGE_CURRENT = 0,
        VALUE_PAGE_DEFAULT = 1, ///< as the attribute was constructed
    };

    /// `context` is where the attribute's item lives; it may be null and must outlive the attribute.
    OfAttr(const CoreString& name, Type type, VisualHint hint, OfContext* context,
           const CoreBasicArray<CoreString>& values);
    ~OfAttr() override;

    static const CoreClassInfo& class_info();
    const CoreClassInfo& get_class_info() const override { return class_info(); }

    /// The path attributes there are at this moment. The caller sees to it that none is destroyed while it uses them.
    static CoreSet<OfAttr*> get_path_attrs();

    const CoreString& get_name() const { return name_; }
    Type get_type() const { return type_; }
    VisualHint get_visual_hint() const { return hint_; }
    bool is_hidden() const { return is_hidden_; }
    void set_hidden(bool hidden) { is_hidden_ = hidden; }
    OfContext* get_context() const { return context_; }

    unsigned int get_value_count() const { return values_.get_count(); }
    /// The text at `index`, empty beyond the last. With `expand_home` a leading "~/" becomes the user's home folder;
    /// only paths know one.
    CoreString get_string(const unsigned int& index, const ValuePage& page, const bool& expand_home) const;
    /// Sets a current value; values before it that do not exist yet become empty.
    void set_string(const unsigned int& index, const CoreString& value);

private:
    CoreString name_;
    Type type_;
    VisualHint hint_;
    bool is_hidden_ = false;
    OfContext* context_;
    CoreArray<CoreString> values_;
    CoreArray<CoreString> default_values_;
};
