/// How CoreHashTable and CoreSet hash and compare their keys.
#pragma once

#include <cstdint>
#include <type_traits>

#include "vo_core/core_hash.h"
#include "vo_core/core_string.h"

/// Specialise for a key type, or give a table a traits class of your own, with these two functions. Overloads for other
/// types make look-ups by them possible without building a key; equal values must hash alike.
template <class Key>
struct CoreHashTraits
{
    static_assert(std::is_integral_v<Key> || std::is_enum_v<Key> || std::is_pointer_v<Key>,
                  "specialise CoreHashTraits for this key type");
    static unsigned int hash(const Key& key)
    {
        std::uint64_t bits = 0;
        if constexpr (std::is_pointer_v<Key>)
            bits = reinterpret_cast<std::uintptr_t>(key);
        else
            bits = static_cast<std::uint64_t>(key);
        bits *= 0x9e3779b97f4a7c15ull; // spreads keys that differ only in few, often high, bits
        return static_cast<unsigned int>(bits >> 32);
    }
    static bool equal(const Key& a, const Key& b) { return a == b; }
};

/// Look-ups by CoreString, std::string, std::string_view and zero-terminated text.
template <>
struct CoreHashTraits<CoreString>
{
    template <class Text>
    static unsigned int hash(const Text& key)
    {
        const std::string_view view = view_of(key);
        return CoreHash::generate_jenkins(view.data(), view.size());
    }
    template <class Text>
    static bool equal(const CoreString& a, const Text& b)
    {
        return a.get_view() == view_of(b);
    }

private:
    static std::string_view view_of(const CoreBasicString& text) { return text.get_view(); }
    static std::string_view view_of(const std::string& text) { return text; }
    static std::string_view view_of(std::string_view text) { return text; }
    static std::string_view view_of(const char* text) { return text; }
};
