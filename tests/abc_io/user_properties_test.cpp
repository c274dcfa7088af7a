/// User properties and geometry parameters: every type and extent, names, indices, interpolation, refusals.
#include <support/abc_archives.h>
#include <support/open_handle.h>

#include <gmock/gmock.h>

#include <limits>
#include <random>
#include <type_traits>

using namespace abc_archives;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Property = ResourceProperty;
using Random = std::mt19937;

template <class T>
CoreArray<T> values_of(const Property& property)
{
    const CoreArray<T>* const values = std::get_if<CoreArray<T>>(&property.values);
    return values ? *values : CoreArray<T>();
}

template <class T>
std::vector<T> to_vector(const CoreBasicArray<T>& values)
{
    return std::vector<T>(values.begin(), values.end());
}

/// Any number of the type, its limits often; any text.
template <class T>
T random_value(Random& random)
{
    if constexpr (std::is_same_v<T, std::string>) {
        std::string text(random() % 12, ' ');
        for (char& character : text)
            character = static_cast<char>('!' + random() % 90);
        return text;
    } else if constexpr (std::is_same_v<T, std::wstring>) {
        std::wstring text(random() % 12, L' ');
        for (wchar_t& character : text)
            character = static_cast<wchar_t>(random() % 2 ? L'a' + random() % 26 : 0x100 + random() % 0x600);
        return text;
    } else if constexpr (std::is_same_v<T, AbcG::bool_t>) {
        return AbcG::bool_t(random() % 2 == 0);
    } else if constexpr (std::is_integral_v<T>) {
        const T limits[] = {std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), T(random())};
        return limits[random() % 3];
    } else {
        return T(float(std::uniform_real_distribution<double>(-1000, 1000)(random)));
    }
}

/// What the host is to get of a stored value.
template <class Host, class Stored>
Host expected_value(const Stored& stored)
{
    if constexpr (std::is_same_v<Stored, std::wstring>) {
        std::string text; // two bytes for everything that random_value makes beyond ASCII
        for (const wchar_t character : stored) {
            if (character < 0x80) {
                text += char(character);
            } else {
                text += char(0xc0 | (character >> 6));
                text += char(0x80 | (character & 0x3f));
            }
        }
        return Host(text);
    } else if constexpr (std::is_same_v<Stored, AbcG::bool_t>) {
        return stored.asBool();
    } else {
        return Host(stored);
    }
}

class UserProperties : public StartedLibrary
{
protected:
    /// An archive with the mesh /mesh; `write(user properties, geometry parameters, schema)` adds to it.
    template <class Write>
    void write(Write&& write)
    {
        write_archive(file_.path(), [&](AbcG::OObject top) {
            AbcG::OPolyMesh mesh = add_square(top, "mesh");
            write(mesh.getSchema().getUserProperties(), mesh.getSchema().getArbGeomParams());
        });
    }

    Property load(const std::string& name, double time = 0.0)
    {
        Property property;
        EXPECT_TRUE(AbcInput::load_property(files_, "/mesh", CoreString(name), time, property)) << name;
        return property;
    }

    /// The property through a handle on the mesh, interpolated.
    Property evaluate(const std::string& name, double time)
    {
        const OpenHandle handle(files_);
        set_mesh(*handle);
        Property property;
        EXPECT_TRUE(AbcInput::evaluate_property(*handle, CoreString(name), time, property)) << name;
        return property;
    }

    AbcInput::PropertyType type_of(const std::string& name)
    {
        const OpenHandle handle(files_);
        set_mesh(*handle);
        AbcInput::PropertyType type;
        EXPECT_TRUE(AbcInput::get_property_type(*handle, CoreString(name), type)) << name;
        return type;
    }

    static void set_mesh(AbcInputArchiveHandle& handle)
    {
        const AbcG::IObject top = static_cast<AbcG::IArchive*>(handle.get_archive())->getTop();
        handle.set_object(new AbcG::IPolyMesh(top, "mesh"), AbcInputArchiveHandle::OBJECT_TYPE_POLYMESH);
    }

    /// Writes scalars and arrays of a type in some extents, and expects the same values back.
    template <class Stored, class Host>
    void expect_round_trip(Property::Type type)
    {
        const AbcG::PlainOldDataType pod = Alembic::Util::PODTraitsFromType<Stored>::pod_enum;
        for (const std::uint8_t extent : {1, 2, 3, 4, 6, 9, 16, 255}) {
            const unsigned seed = unsigned(pod) * 1000 + extent;
            Random random(seed);
            const std::size_t count = 1 + random() % 7;
            std::vector<Stored> scalar, array;
            for (std::size_t i = 0; i < extent; ++i)
                scalar.push_back(random_value<Stored>(random));
            for (std::size_t i = 0; i < extent * count; ++i)
                array.push_back(random_value<Stored>(random));
            const AbcG::DataType data_type(pod, extent);
            write([&](AbcG::OCompoundProperty user, AbcG::OCompoundProperty) {
                AbcG::OScalarProperty(user, "scalar", data_type).set(scalar.data());
                AbcG::OArrayProperty(user, "array", data_type)
                    .set(AbcG::ArraySample(array.data(), data_type, AbcG::Dimensions(count)));
                AbcG::OArrayProperty(user, "none", data_type)
                    .set(AbcG::ArraySample(array.data(), data_type, AbcG::Dimensions(0)));
                AbcG::OArrayProperty(user, "unset", data_type);
            });
            const std::string trace = "seed " + std::to_string(seed);
            expect_values<Host>(load("scalar"), type, extent, scalar, trace);
            expect_values<Host>(load("array"), type, extent, array, trace);
            expect_values<Host>(load("none"), type, extent, std::vector<Stored>(), trace);
            expect_values<Host>(load("unset"), type, extent, std::vector<Stored>(), trace);
            EXPECT_EQ(type_of("array").type, type);
            EXPECT_EQ(type_of("array").extent, extent);
        }
    }

    template <class Host, class Stored>
    static void expect_values(const Property& property, Property::Type type, unsigned int extent,
                              const std::vector<Stored>& stored, const std::string& trace)
    {
        ASSERT_EQ(property.get_type(), type) << trace;
        EXPECT_EQ(property.extent, extent) << trace;
        const CoreArray<Host> values = values_of<Host>(property);
        ASSERT_EQ(values.get_count(), stored.size()) << trace;
        for (std::size_t i = 0; i < stored.size(); ++i)
            EXPECT_EQ(values[i], (expected_value<Host, Stored>(stored[i]))) << trace << ", value " << i;
    }

    const ScratchFile file_{"properties.abc"};
    const AbcFileList files_{CoreString(file_.path())};
};

} // namespace

TEST_F(UserProperties, EveryTypeAndExtentComesBack)
{
    expect_round_trip<AbcG::bool_t, bool>(Property::TYPE_BOOL);
    expect_round_trip<std::int8_t, std::int8_t>(Property::TYPE_INT8);
    expect_round_trip<std::uint8_t, std::uint8_t>(Property::TYPE_UINT8);
    expect_round_trip<std::int16_t, std::int16_t>(Property::TYPE_INT16);
    expect_round_trip<std::uint16_t, std::uint16_t>(Property::TYPE_UINT16);
    expect_round_trip<std::int32_t, std::int32_t>(Property::TYPE_INT32);
    expect_round_trip<std::uint32_t, std::uint32_t>(Property::TYPE_UINT32);
    expect_round_trip<std::int64_t, std::int64_t>(Property::TYPE_INT64);
    expect_round_trip<std::uint64_t, std::uint64_t>(Property::TYPE_UINT64);
    expect_round_trip<Alembic::Util::float16_t, float>(Property::TYPE_FLOAT);
    expect_round_trip<float, float>(Property::TYPE_FLOAT);
    expect_round_trip<double, double>(Property::TYPE_DOUBLE);
    expect_round_trip<std::string, CoreString>(Property::TYPE_STRING);
    expect_round_trip<std::wstring, CoreString>(Property::TYPE_STRING);
}

TEST_F(UserProperties, MeaningScopeAndMatricesFollowTheMetadata)
{
    AbcG::M44d matrix;
    for (int i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] = i;
    write([&](AbcG::OCompoundProperty user, AbcG::OCompoundProperty parameters) {
        AbcG::OM44dProperty(user, "matrix").set(matrix);
        AbcG::OC3fProperty(user, "color").set(AbcG::C3f(1, 2, 3));
        AbcG::OBox3dProperty(user, "box").set(AbcG::Box3d(AbcG::V3d(1), AbcG::V3d(2)));
        const std::vector<AbcG::N3f> normals(4);
        AbcG::ON3fGeomParam(parameters, "normal", false, AbcG::kUniformScope, 2)
            .set(AbcG::ON3fGeomParam::Sample(AbcG::N3fArraySample(normals), AbcG::kUniformScope));
        const std::vector<float> numbers = {1};
        AbcG::OFloatArrayProperty(parameters, "plain").set(numbers);
    });
    const Property found = load("matrix");
    EXPECT_EQ(found.interpretation, Property::INTERPRETATION_MATRIX);
    EXPECT_EQ(found.scope, Property::SCOPE_UNKNOWN);
    EXPECT_THAT(to_vector(values_of<double>(found)),
                ElementsAre(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15)); // for column vectors
    EXPECT_EQ(load("color").interpretation, Property::INTERPRETATION_COLOR);
    EXPECT_EQ(load("box").interpretation, Property::INTERPRETATION_BOX);
    EXPECT_EQ(load("normal").interpretation, Property::INTERPRETATION_NORMAL);
    EXPECT_EQ(load("normal").scope, Property::SCOPE_UNIFORM);
    EXPECT_EQ(load("normal").array_extent, 2u);
    EXPECT_EQ(load("plain").scope, Property::SCOPE_CONSTANT);
    EXPECT_EQ(type_of("normal").scope, Property::SCOPE_UNIFORM);
    EXPECT_TRUE(type_of("normal").is_array);
    EXPECT_FALSE(type_of("color").is_array);
}

TEST_F(UserProperties, EveryListedNameLeadsToItsProperty)
{
    write([](AbcG::OCompoundProperty user, AbcG::OCompoundProperty parameters) {
        AbcG::OInt32Property(user, "same").set(1);
        AbcG::OCompoundProperty outer(user, "outer");
        AbcG::OCompoundProperty inner(outer, "in.ner"); // a dot of its own
        AbcG::OInt32Property(inner, "deep").set(2);
        AbcG::OInt32Property(outer, "in").set(3);
        AbcG::OInt32Property(user, "outer.in").set(4); // hidden by the one before
        AbcG::OCompoundProperty(user, "empty");
        const std::vector<std::int32_t> five = {5};
        AbcG::OInt32ArrayProperty(parameters, "same").set(five);
        AbcG::OInt32ArrayProperty(parameters, "other").set(five);
    });
    const OpenHandle handle(files_);
    CoreVector<CoreString> names;
    ASSERT_TRUE(AbcInput::get_property_names(*handle, "/mesh", names));
    EXPECT_THAT(to_strings(names), ElementsAre("same", "outer.in.ner.deep", "outer.in", "other"));
    std::vector<int> values;
    for (const CoreString& name : names)
        values.push_back(values_of<std::int32_t>(load(name.get_data()))[0]);
    EXPECT_THAT(values, ElementsAre(1, 2, 3, 5));

    Property untouched;
    untouched.name = "untouched";
    for (const char* const absent : {"", "outer", "outer.", "outer.in.ner", "empty", "deep", ".userProperties", "P"})
        EXPECT_FALSE(AbcInput::load_property(files_, "/mesh", absent, 0.0, untouched)) << absent;
    EXPECT_FALSE(AbcInput::load_property(files_, "/absent", "same", 0.0, untouched));
    EXPECT_FALSE(AbcInput::evaluate_property(*handle, "same", 0.0, untouched)) << "the handle holds no object";
    EXPECT_EQ(untouched.name, "untouched");
}

TEST_F(UserProperties, FloatingPointIsInterpolatedAndNothingElse)
{
    const std::vector<float> first = {0, 10}, second = {1, 30}, longer = {1, 2, 3};
    const std::vector<Alembic::Util::float16_t> halves[] = {{0.0f}, {1.0f}};
    write([&](AbcG::OCompoundProperty user, AbcG::OCompoundProperty) {
        const auto times = std::make_shared<AbcG::TimeSampling>(0.5, 1.0); // 1.0 s, 1.5 s, ...
        AbcG::OFloatArrayProperty floats(user, "floats", times), sizes(user, "sizes", times);
        AbcG::OHalfArrayProperty half(user, "halves", times);
        AbcG::ODoubleProperty number(user, "double", times);
        AbcG::OInt32Property integer(user, "integer", times);
        AbcG::OBoolProperty flag(user, "flag", times);
        AbcG::OStringProperty text(user, "text", times);
        for (const int i : {0, 1}) {
            floats.set(AbcG::FloatArraySample(i ? second : first));
            sizes.set(AbcG::FloatArraySample(i ? longer : first));
            half.set(AbcG::HalfArraySample(halves[i]));
            number.set(100.0 * i);
            integer.set(100 * i);
            flag.set(i == 1);
            text.set(i ? "second" : "first");
        }
    });
    EXPECT_THAT(to_vector(values_of<float>(evaluate("floats", 1.25))), ElementsAre(0.5f, 20.0f));
    EXPECT_THAT(to_vector(values_of<float>(evaluate("halves", 1.375))), ElementsAre(0.75f));
    EXPECT_THAT(to_vector(values_of<double>(evaluate("double", 1.125))), ElementsAre(25.0));
    EXPECT_THAT(to_vector(values_of<float>(load("floats", 1.3))), ElementsAre(1.0f, 30.0f)); // the nearest
    // Near a sample, before the first and after the last: as stored.
    EXPECT_EQ(evaluate("double", 1.0009), load("double", 1.0));
    EXPECT_NE(evaluate("double", 1.0011), load("double", 1.0));
    EXPECT_EQ(evaluate("double", -5), load("double", 1.0));
    EXPECT_EQ(evaluate("double", 5), load("double", 1.5));
    for (const char* const name : {"sizes", "integer", "flag", "text"}) {
        EXPECT_EQ(evaluate(name, 1.2), load(name, 1.0)) << name;
        EXPECT_EQ(evaluate(name, 1.3), load(name, 1.5)) << name;
        EXPECT_NE(load(name, 1.0), load(name, 1.5)) << name;
    }
    EXPECT_EQ(type_of("floats").sample_count, 2u);
    EXPECT_FALSE(type_of("floats").is_constant);
}

TEST_F(UserProperties, IndexedParametersKeepTheirIndices)
{
    const std::vector<float> first = {0, 10}, second = {1, 30};
    const std::vector<std::uint32_t> indices = {1, 0, 1, 1}, others = {0, 0, 1, 1}, none;
    write([&](AbcG::OCompoundProperty, AbcG::OCompoundProperty parameters) {
        using Param = AbcG::OFloatGeomParam;
        const auto add = [&](const char* name, const auto& second_indices) {
            Param param(parameters, name, true, AbcG::kFacevaryingScope, 1);
            param.set(Param::Sample(AbcG::FloatArraySample(first), AbcG::UInt32ArraySample(indices),
                                    AbcG::kFacevaryingScope));
            param.set(Param::Sample(AbcG::FloatArraySample(second), AbcG::UInt32ArraySample(second_indices),
                                    AbcG::kFacevaryingScope));
        };
        add("same", indices);
        add("different", others);
        Param(parameters, "without", true, AbcG::kVertexScope, 1)
            .set(Param::Sample(AbcG::FloatArraySample(first), AbcG::UInt32ArraySample(none), AbcG::kVertexScope));
    });
    const Property half = evaluate("same", 0.5);
    EXPECT_THAT(to_vector(half.indices), ElementsAre(1, 0, 1, 1));
    EXPECT_THAT(to_vector(values_of<float>(half)), ElementsAre(0.5f, 20.0f));
    EXPECT_EQ(half.scope, Property::SCOPE_FACE_VARYING);
    EXPECT_EQ(half.name, "same");
    EXPECT_EQ(evaluate("different", 0.4), load("different", 0.0));
    EXPECT_EQ(evaluate("different", 0.6), load("different", 1.0));
    EXPECT_THAT(to_vector(load("different", 1.0).indices), ElementsAre(0, 0, 1, 1));
    EXPECT_TRUE(load("without").indices.is_empty());
    EXPECT_TRUE(type_of("same").is_indexed);
    EXPECT_EQ(type_of("same").type, Property::TYPE_FLOAT);
}

TEST_F(UserProperties, DamagedParametersAreRefused)
{
    const std::vector<float> values = {0, 10};
    const std::vector<std::uint32_t> beyond = {0, 2};
    write([&](AbcG::OCompoundProperty, AbcG::OCompoundProperty parameters) {
        using Param = AbcG::OFloatGeomParam;
        Param(parameters, "beyond", true, AbcG::kVertexScope, 1)
            .set(Param::Sample(AbcG::FloatArraySample(values), AbcG::UInt32ArraySample(beyond), AbcG::kVertexScope));
        // Indices of a type that no index has; values that are no array.
        AbcG::OCompoundProperty floating(parameters, "floating");
        AbcG::OFloatArrayProperty(floating, ".vals").set(values);
        AbcG::OFloatArrayProperty(floating, ".indices").set(values);
        AbcG::OCompoundProperty scalar(parameters, "scalar");
        AbcG::OFloatProperty(scalar, ".vals").set(1);
        AbcG::OUInt32ArrayProperty(scalar, ".indices").set(beyond);
        AbcG::OCompoundProperty nested(parameters, "nested");
        AbcG::OCompoundProperty(nested, ".vals");
        AbcG::OCompoundProperty(nested, ".indices");
    });
    Property property;
    EXPECT_FALSE(AbcInput::load_property(files_, "/mesh", "beyond", 0.0, property));
    EXPECT_THAT(log_.take(),
                ElementsAre(HasSubstr("'beyond' of the object '/mesh' is not loaded: it has the index 2")));
    EXPECT_FALSE(AbcInput::load_property(files_, "/mesh", "floating", 0.0, property));
    EXPECT_THAT(log_.take(), ElementsAre(HasSubstr("its indices are no unsigned 32-bit numbers")));
    EXPECT_EQ(property, Property());
    // A compound that is no parameter after all is one of plain properties.
    EXPECT_EQ(values_of<float>(load("scalar..vals"))[0], 1.0f);
    EXPECT_EQ(load("scalar..indices").get_element_count(), 2u);
    EXPECT_FALSE(AbcInput::load_property(files_, "/mesh", "nested", 0.0, property));
}

TEST_F(UserProperties, WideTextThatIsNoUnicodeIsReplaced)
{
    write([](AbcG::OCompoundProperty user, AbcG::OCompoundProperty) {
        const std::wstring text = {L'a',        wchar_t(0xd800), wchar_t(0x1f600), wchar_t(0x7fffffff),
                                   wchar_t(-1), L'\x20ac'};
        AbcG::OWstringProperty(user, "text").set(text);
    });
    EXPECT_EQ(values_of<CoreString>(load("text"))[0],
              "a\xef\xbf\xbd\xf0\x9f\x98\x80\xef\xbf\xbd\xef\xbf\xbd\xe2\x82\xac");
}
