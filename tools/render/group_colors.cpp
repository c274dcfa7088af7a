#include "group_colors.h"

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

} // namespace

float decode_srgb(float value)
{
    return value <= 0.04045f ? value / 12.92f : std::pow((value + 0.055f) / 1.055f, 2.4f);
}

Vec3 make_name_color(std::string_view name)
{
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
