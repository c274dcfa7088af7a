#include "group_colors.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

/// FNV-1a, and a last mix so that names that differ in their last letter get far apart.
std::uint32_t hash_name(std::string_view name)
{
    std::uint32_t hash = 2166136261u;
    for (const char character : name)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619u;
    hash = (hash ^ (hash >> 16)) * 0x85ebca6bu;
    hash = (hash ^ (hash >> 13)) * 0xc2b2ae35u;
    return hash ^ (hash >> 16);
}

/// One channel of a colour of hue 0 to 1: 0 and a third are where the channel is full, see HSL.
float channel_of_hue(float hue)
{
    hue -= std::floor(hue);
    const float distance = std::min(hue, 1.0f - hue) * 6.0f;
    return std::min(std::max(2.0f - distance, 0.0f), 1.0f);
}

/// A colour that names may have in them; as the picture shows it.
struct ColorWord
{
    std::string_view word;
    std::uint8_t red, green, blue;
};

constexpr ColorWord color_words[] = {
    {"red", 200, 58, 46},    {"orange", 232, 130, 44}, {"yellow", 240, 196, 60}, {"green", 104, 150, 62},
    {"cyan", 70, 180, 190},  {"blue", 46, 110, 168},   {"purple", 126, 78, 160}, {"pink", 232, 140, 160},
    {"brown", 128, 90, 58},  {"beige", 222, 200, 154}, {"black", 34, 34, 36},    {"white", 240, 240, 238},
    {"grey", 120, 122, 126}, {"gray", 120, 122, 126},  {"gold", 212, 172, 60},   {"silver", 188, 190, 194},
};

bool is_letter(char character)
{
    return (character | 0x20) >= 'a' && (character | 0x20) <= 'z';
}

/// Whether a name has a word at a place, whole: the next letter, if one follows, begins a word of its own.
bool has_word_at(std::string_view name, std::size_t place, std::string_view word)
{
    if (place > 0 && is_letter(name[place - 1])) return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (place + i >= name.size() || (name[place + i] | 0x20) != word[i]) return false;
    const std::size_t end = place + word.size();
    return end == name.size() || !is_letter(name[end]) || !(name[end] & 0x20);
}

/// The first colour that a name's last part, after any slash, has in it.
const ColorWord* find_color_word(std::string_view name)
{
    const std::size_t slash = name.find_last_of('/');
    if (slash != name.npos) name.remove_prefix(slash + 1);
    for (std::size_t place = 0; place < name.size(); ++place)
        for (const ColorWord& word : color_words)
            if (has_word_at(name, place, word.word)) return &word;
    return nullptr;
}

} // namespace

float decode_srgb(float value)
{
    return value <= 0.04045f ? value / 12.92f : std::pow((value + 0.055f) / 1.055f, 2.4f);
}

Vec3 make_name_color(std::string_view name)
{
    if (const ColorWord* const word = find_color_word(name))
        return {decode_srgb(word->red / 255.0f), decode_srgb(word->green / 255.0f), decode_srgb(word->blue / 255.0f)};
    const std::uint32_t hash = hash_name(name);
    const float hue = static_cast<float>(hash & 0xffff) / 65536.0f;
    const float saturation = 0.45f + 0.3f * static_cast<float>(hash >> 16 & 0xff) / 255.0f;
    const float value = 0.6f + 0.3f * static_cast<float>(hash >> 24) / 255.0f;
    Vec3 color;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const float full = channel_of_hue(hue - static_cast<float>(channel) / 3.0f);
        color[channel] = decode_srgb(value * (1.0f - saturation * (1.0f - full)));
    }
    return color;
}

std::vector<Vec3> make_group_colors(const WorldMesh& mesh)
{
    const CoreArray<CoreString>& names = mesh.geometry.group_names;
    if (names.get_count() == 1 && names[0].get_view() == "default") return {make_name_color(mesh.path)};
    std::vector<Vec3> colors;
    for (const CoreString& name : names)
        colors.push_back(make_name_color(name.get_view()));
    return colors;
}
