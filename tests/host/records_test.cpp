/// Geometry maps and resource properties.
#include "vo_geometry/geometry_color_map.h"
#include "vo_geometry/geometry_normal_map.h"
#include "vo_geometry/geometry_uv_map.h"
#include "vo_resource/resource_property.h"

#include <cstring>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

static_assert(std::is_standard_layout_v<GMathVec3<float>> && std::is_trivial_v<GMathVec3<float>>);
static_assert(std::is_trivial_v<GeometryColor>);
static_assert(std::is_nothrow_move_constructible_v<GeometryUvMap>);

TEST(GeometryMaps, MovingHandsTheArraysOver)
{
    GeometryUvMap map("map1", {{0.5f, 0.25f, 0.0f}}, {0, 0, 0});
    const GMathVec3<float>* const storage = map.values.get_data();
    const GeometryUvMap copy(map);
    GeometryUvMap moved(std::move(map));
    EXPECT_EQ(moved.values.get_data(), storage);
    EXPECT_EQ(moved, copy);
    EXPECT_NE(copy.values.get_data(), storage);
    EXPECT_TRUE(map.values.is_empty() && map.indices.is_empty());
    EXPECT_GE(moved.get_memory_size(), sizeof(moved) + 12 + 12 + 4);
    moved.values[0].y = 0.5f;
    EXPECT_NE(moved, copy);
}

TEST(ResourceProperty, NamesEachTypeThatItCanHold)
{
    ResourceProperty property;
    EXPECT_EQ(property.get_type(), ResourceProperty::TYPE_NONE);
    property.values = CoreArray<CoreString>{"a", "b"};
    EXPECT_STREQ(ResourceProperty::get_type_name(property.get_type()), "TYPE_STRING");
    property.values = CoreArray<std::uint16_t>{1};
    EXPECT_STREQ(ResourceProperty::get_type_name(property.get_type()), "TYPE_UINT16");
    property.values = CoreArray<double>(16);
    EXPECT_STREQ(ResourceProperty::get_type_name(property.get_type()), "TYPE_DOUBLE");
    EXPECT_STREQ(ResourceProperty::get_type_name(ResourceProperty::Type(14)), "TYPE_UNKNOWN");
    EXPECT_STREQ(ResourceProperty::get_scope_name(ResourceProperty::SCOPE_FACE_VARYING), "SCOPE_FACE_VARYING");
    EXPECT_STREQ(ResourceProperty::get_interpretation_name(ResourceProperty::INTERPRETATION_BOX), "INTERPRETATION_BOX");
    for (int i = 0; i <= ResourceProperty::TYPE_COUNT; ++i)
        EXPECT_STRNE(ResourceProperty::get_type_name(ResourceProperty::Type(i)), "TYPE_UNKNOWN") << i;
}

TEST(ResourceProperty, CountsElementsAndWritesValuesAsText)
{
    ResourceProperty property;
    property.values = CoreArray<float>{0.5f, 1.0f, -2.25f, 3.0f};
    property.extent = 3;
    EXPECT_EQ(property.get_value_count(), 4u);
    EXPECT_EQ(property.get_element_count(), 1u);
    EXPECT_EQ(property.get_values_as_text(), (CoreArray<CoreString>{"0.5", "1", "-2.25", "3"}));
    property.values = CoreArray<std::int8_t>{65, -1};
    EXPECT_EQ(property.get_values_as_text(), (CoreArray<CoreString>{"65", "-1"})) << "numbers, not characters";
    property.values = CoreArray<bool>{true, false};
    EXPECT_EQ(property.get_values_as_text(), (CoreArray<CoreString>{"true", "false"}));
    property.extent = 0;
    EXPECT_EQ(property.get_element_count(), 0u);
    const ResourceProperty copy = property;
    EXPECT_EQ(copy, property);
    property.indices = {0};
    EXPECT_NE(copy, property);
}
