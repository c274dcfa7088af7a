#include "triangulation.h"

namespace {

constexpr std::size_t max_cut_corner_count = 256; // cutting ears takes the cube of this in the worst case

Vec3 find_normal(const std::vector<Vec3>& corners)
{
    Vec3 normal{};
    for (std::size_t i = 2; i < corners.size(); ++i)
        normal = normal + cross(corners[i - 1] - corners[0], corners[i] - corners[0]);
    return normal;
}

/// Twice the area of a triangle as seen against the normal.
float find_area(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& normal)
{
    return dot(cross(b - a, c - a), normal);
}

bool is_convex(const std::vector<Vec3>& corners, const Vec3& normal)
{
    const std::size_t count = corners.size();
    for (std::size_t i = 0; i < count; ++i)
        if (find_area(corners[i], corners[(i + 1) % count], corners[(i + 2) % count], normal) < 0.0f) return false;
    return true;
}

/// Whether corner i of the rest can be cut: it points outwards, and no other corner lies in its triangle.
bool is_ear(const std::vector<Vec3>& corners, const std::vector<unsigned int>& rest, std::size_t i, const Vec3& normal)
{
    const std::size_t count = rest.size(), before = (i + count - 1) % count, after = (i + 1) % count;
    const Vec3 &a = corners[rest[before]], &b = corners[rest[i]], &c = corners[rest[after]];
    if (find_area(a, b, c, normal) <= 0.0f) return false;
    for (std::size_t other = 0; other < count; ++other) {
        if (other == before || other == i || other == after) continue;
        const Vec3& p = corners[rest[other]];
        if (p != a && p != b && p != c && find_area(a, b, p, normal) >= 0.0f && find_area(b, c, p, normal) >= 0.0f &&
            find_area(c, a, p, normal) >= 0.0f)
            return false;
    }
    return true;
}

} // namespace

void triangulate(const std::vector<Vec3>& corners, std::vector<unsigned int>& triangles)
{
    std::vector<unsigned int> rest;
    for (std::size_t i = 0; i < corners.size(); ++i)
        rest.push_back(static_cast<unsigned int>(i));
    const Vec3 normal = find_normal(corners);
    const bool is_simple = corners.size() > max_cut_corner_count || is_convex(corners, normal);
    while (!is_simple && rest.size() > 3) {
        std::size_t ear = 0;
        while (ear < rest.size() && !is_ear(corners, rest, ear, normal))
            ++ear;
        if (ear == rest.size()) break; // it crosses itself: what remains becomes a fan
        const std::size_t count = rest.size();
        triangles.insert(triangles.end(), {rest[(ear + count - 1) % count], rest[ear], rest[(ear + 1) % count]});
        rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(ear));
    }
    for (std::size_t i = 2; i < rest.size(); ++i)
        triangles.insert(triangles.end(), {rest[0], rest[i - 1], rest[i]});
}
