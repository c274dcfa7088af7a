/// The application, as the modules it loads see it.
#pragma once

#include <mutex>

#include "vo_app_base/app_dialog.h"
#include "vo_core/core_array.h"
#include "vo_core/core_string.h"

/// Usable as it is; an application with a user derives from it and asks the user.
class VO_HOST_EXPORT AppBase
{
public:
    /// States that modules keep and can verify.
    enum VerifiableState {
        VERIFIABLE_STATE_RESOURCES = 0, ///< files that loaded resources were read from
        VERIFIABLE_STATE_COUNT = 1,
    };
    enum DialogStyle {
        DIALOG_STYLE_INFORMATION = 0,
        DIALOG_STYLE_WARNING = 8,
        DIALOG_STYLE_QUESTION = 16,
    };
    /// Returns whether the module's state is valid, or became so. It may ask the user when the argument is true.
    using VerificationCallback = bool (*)(bool interactive);

    /// `version_name` is what `get_version_name` returns, for example "1.2.0".
    explicit AppBase(const CoreString& version_name = "");
    virtual ~AppBase();
    AppBase(const AppBase&) = delete;
    AppBase& operator=(const AppBase&) = delete;

    virtual CoreString get_version_name() const { return version_name_; }

    /// One callback per state: a later one replaces it, null removes it. A state that does not exist is ignored.
    virtual void register_verification_callback_for_state(VerifiableState state, VerificationCallback callback);
    /// Calls the state's callback and returns its answer; true when there is none.
    bool verify_state(VerifiableState state, bool interactive);

    /// Asks the user. `style` is a DialogStyle; `extra_buttons` are offered besides yes and no, and answer 2, 3, ...
    /// This one has no user to ask and returns `default_answer`.
    virtual AppDialog show_question_dialog(const CoreString& message, const CoreString& title,
                                           const AppDialog& default_answer, const int& style,
                                           const CoreBasicArray<CoreString>& extra_buttons);

private:
    CoreString version_name_;
    std::mutex callbacks_mutex_;
    VerificationCallback callbacks_[VERIFIABLE_STATE_COUNT] = {};
};
