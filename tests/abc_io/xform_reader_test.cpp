/// Transforms of archives: both evaluations against each other and against Alembic, at stored and at other times.
#include <support/abc_archives.h>
#include <support/open_handle.h>
#include <support/xform_stacks.h>

#include <Alembic/AbcCoreFactory/All.h>
#include <abc_animation_header.h>
#include <abc_internal.h>
#include <abc_pivot_data.h>

#include <atomic>
#include <thread>

using namespace abc_archives;
using namespace xform_stacks;

namespace {

using Matrix = GMathMatrix4x4<double>;
using Samples = std::vector<AbcG::XformSample>;

const std::vector<double> sample_times = {1.0, 1.5, 3.0};

AbcG::TimeSamplingPtr acyclic(const std::vector<double>& times)
{
    const AbcG::TimeSamplingType type(AbcG::TimeSamplingType::kAcyclic);
    return std::make_shared<AbcG::TimeSampling>(type, times);
}

void add_xform(AbcG::OObject parent, const std::string& name, Samples samples,
               AbcG::TimeSamplingPtr sampling = acyclic(sample_times))
{
    AbcG::OXform xform(parent, name, sampling);
    for (AbcG::XformSample& sample : samples)
        xform.getSchema().set(sample);
}

AbcG::XformSample translation(double x, bool inherits = true)
{
    AbcG::XformSample sample;
    sample.addOp(AbcG::XformOp(AbcG::kTranslateOperation), AbcG::V3d(x, 0, 0));
    sample.setInheritsXforms(inherits);
    return sample;
}

Matrix transposed(const AbcG::M44d& matrix)
{
    Matrix result;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result[row][column] = matrix[column][row];
    return result;
}

class XformReader : public StartedLibrary
{
protected:
    /// Evaluates both ways and checks that they agree; a stack with a plain matrix or a free orientation, exactly.
    Matrix evaluate(const OpenHandle& handle, double time, const std::vector<AbcG::XformOp>& ops)
    {
        Matrix matrix;
        AbcPivotData data;
        EXPECT_TRUE(AbcInput::evaluate_pivot_matrix(*handle, time, matrix));
        EXPECT_TRUE(AbcInput::evaluate_pivot_data(*handle, time, data));
        const double difference = relative_difference(data.get_global_matrix(), matrix);
        EXPECT_LE(difference, data.use_matrix ? 0.0 : 1e-9) << "time " << time << " s, " << describe(ops);
        fallbacks_ += data.use_matrix;
        return matrix;
    }

    const ScratchFile file_{"xforms.abc"};
    const AbcFileList files_{CoreString(file_.path())};
    AbcAnimationHeader header_;
    int fallbacks_ = 0;
};

} // namespace

TEST_F(XformReader, ComponentsAndMatrixAreTheSameTransform)
{
    constexpr unsigned int seed = 2024;
    constexpr int stack_count = 3000;
    Random random(seed);
    std::vector<std::vector<AbcG::XformOp>> stacks;
    std::vector<Samples> samples;
    write_archive(file_.path(), [&](AbcG::OObject top) {
        for (int i = 0; i < stack_count; ++i) {
            std::vector<AbcG::XformOp> ops = random_canonical_operations(random);
            const AbcG::XformOp stray[] = {AbcG::XformOp(AbcG::kMatrixOperation),
                                           AbcG::XformOp(AbcG::kRotateOperation, AbcG::kRotateOrientationHint)};
            if (i % 5 == 0) ops.insert(ops.begin(), stray[i % 2]); // every fifth does not fit the components
            stacks.push_back(ops);
            samples.emplace_back();
            for (std::size_t s = 0; s < sample_times.size(); ++s)
                samples.back().push_back(random_sample(random, ops));
            add_xform(top, "x" + std::to_string(i), samples.back());
        }
    });
    const OpenHandle handle(files_);
    for (std::size_t i = 0; i < stacks.size(); ++i) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", transform " + std::to_string(i));
        ASSERT_TRUE(AbcInput::get_animation_header(*handle, CoreString("/x" + std::to_string(i)), header_));
        for (std::size_t s = 0; s < sample_times.size(); ++s) {
            const Matrix stored = transposed(samples[i][s].getMatrix());
            EXPECT_EQ(evaluate(handle, sample_times[s], stacks[i]), stored);
            EXPECT_EQ(evaluate(handle, sample_times[s] + 0.00005, stacks[i]), stored) << "too near to interpolate";
        }
        EXPECT_EQ(evaluate(handle, -5.0, stacks[i]), transposed(samples[i].front().getMatrix()));
        EXPECT_EQ(evaluate(handle, 500.0, stacks[i]), transposed(samples[i].back().getMatrix()));
        for (const double time : {1.001, 1.25, 1.4999, 2.0, 2.9})
            evaluate(handle, time, stacks[i]);
        if (HasFailure()) return;
    }
    EXPECT_GE(fallbacks_, stack_count / 5 * 13);
    EXPECT_LE(fallbacks_, stack_count / 4 * 13);
}

TEST_F(XformReader, BetweenSamplesIsAFractionOfTheInterval)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        add_xform(top, "moving", {translation(0), translation(10), translation(40)});
        add_xform(top, "free", {translation(0, false), translation(10, false), translation(40, false)});
    });
    const OpenHandle handle(files_);
    ASSERT_TRUE(AbcInput::get_animation_header(*handle, "/moving", header_));
    EXPECT_NEAR(evaluate(handle, 1.2, {})[0][3], 4.0, 1e-12);
    EXPECT_NEAR(evaluate(handle, 1.50011, {})[0][3], 10.0 + 30.0 * 0.00011 / 1.5, 1e-9);
    EXPECT_NEAR(evaluate(handle, 2.25, {})[0][3], 25.0, 1e-12);

    ASSERT_TRUE(AbcInput::get_animation_header(*handle, "/free", header_));
    AbcPivotData data;
    ASSERT_TRUE(AbcInput::evaluate_pivot_data(*handle, 1.0, data));
    EXPECT_FALSE(data.inherits_transform);
    ASSERT_TRUE(AbcInput::evaluate_pivot_data(*handle, 1.2, data));
    EXPECT_TRUE(data.inherits_transform) << "what is between two samples inherits";
}

TEST_F(XformReader, WithoutSamplesThereIsTheParentOrTheIdentity)
{
    write_archive(file_.path(), [](AbcG::OObject top) { AbcG::OXform(top, "never_set"); });
    {
        Alembic::AbcCoreFactory::IFactory factory;
        const AbcG::IXform xform(factory.getArchive(file_.path()).getTop(), "never_set");
        const Matrix parent = transposed(translation(7).getMatrix());
        EXPECT_EQ(AbcInternal::get_xform_matrix(xform.getSchema(), 1.0, &parent), parent);
        EXPECT_EQ(AbcInternal::get_xform_matrix(xform.getSchema(), 1.0, nullptr), Matrix());
    }
    AbcPivotData data;
    ASSERT_TRUE(AbcInput::get_pivot_data(files_, "/never_set", data));
    EXPECT_TRUE(data.use_matrix);
    EXPECT_TRUE(data.inherits_transform);
    EXPECT_EQ(data.get_global_matrix(), Matrix());
}

TEST_F(XformReader, AParentCountsForWhatInherits)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        add_xform(top, "x", {translation(1), translation(3, false), translation(5)});
    });
    Alembic::AbcCoreFactory::IFactory factory;
    const AbcG::IXform xform(factory.getArchive(file_.path()).getTop(), "x");
    const Matrix parent = transposed(translation(100).getMatrix());
    const auto x_at = [&](double time) {
        return AbcInternal::get_xform_matrix(xform.getSchema(), time, &parent)[0][3];
    };
    EXPECT_EQ(x_at(1.0), 101.0);
    EXPECT_EQ(x_at(1.5), 3.0);
    EXPECT_EQ(x_at(1.25), 102.0);
    const CoreArray<double> values = AbcInternal::convert_matrix_to_array(parent);
    ASSERT_EQ(values.get_count(), 16u);
    EXPECT_EQ(values[3], 100.0);
}

TEST_F(XformReader, GetPivotDataReadsTheFirstSample)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        add_xform(top, "x", {translation(1), translation(3)});
        add_square(top, "mesh");
    });
    AbcPivotData data;
    ASSERT_TRUE(AbcInput::get_pivot_data(files_, "/x", data));
    EXPECT_EQ(data.transform.get_translation().x, 1.0);
    EXPECT_FALSE(AbcInput::get_pivot_data(files_, "/mesh", data));
    EXPECT_FALSE(AbcInput::get_pivot_data(files_, "/nothing", data));
    EXPECT_EQ(data.transform.get_translation().x, 1.0) << "a failure leaves the record alone";
    EXPECT_FALSE(AbcInput::get_pivot_data(AbcFileList(CoreString(file_.folder() + "/none.abc")), "/x", data));
    EXPECT_EQ(log_.take().size(), 1u);
}

TEST_F(XformReader, AHandleWithoutATransformIsRefused)
{
    write_archive(file_.path(), [](AbcG::OObject top) { add_square(top, "mesh"); });
    const OpenHandle handle(files_);
    Matrix matrix;
    AbcPivotData data;
    EXPECT_FALSE(AbcInput::evaluate_pivot_matrix(*handle, 0.0, matrix));
    EXPECT_FALSE(AbcInput::evaluate_pivot_data(*handle, 0.0, data));
    handle->set_object(
        new AbcG::IObject(static_cast<AbcG::IArchive*>(handle->get_archive())->getTop().getChild("mesh")),
        AbcInputArchiveHandle::OBJECT_TYPE_POLYMESH);
    EXPECT_FALSE(AbcInput::evaluate_pivot_matrix(*handle, 0.0, matrix));
    EXPECT_FALSE(AbcInput::evaluate_pivot_data(*handle, 0.0, data));
}

TEST_F(XformReader, PropertiesOfTheWrongSizeOrTypeAreHarmless)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        AbcG::MetaData schema;
        schema.set("schema", "AbcGeom_Xform_v3");
        const auto add = [&](const char* name, auto&& fill) {
            AbcG::OObject object(top, name, schema);
            AbcG::OCompoundProperty compound(object.getProperties(), ".xform", schema);
            AbcG::OBoolProperty inherits(compound, ".inherits");
            for (int i = 0; i < 2; ++i)
                inherits.set(true);
            fill(compound);
        };
        add("few_values", [](AbcG::OCompoundProperty compound) {
            const std::uint8_t ops[] = {0x10, 0x60, 0x30}; // translation, rotation about Z, matrix
            const double values[] = {1, 2};
            AbcG::OScalarProperty(compound, ".ops", AbcG::DataType(Alembic::Util::kUint8POD, 3)).set(ops);
            AbcG::OScalarProperty(compound, ".vals", AbcG::DataType(Alembic::Util::kFloat64POD, 2)).set(values);
        });
        add("unknown_operation", [](AbcG::OCompoundProperty compound) {
            const std::uint8_t ops[] = {0xf0, 0x1f};
            AbcG::OScalarProperty(compound, ".ops", AbcG::DataType(Alembic::Util::kUint8POD, 2)).set(ops);
        });
        add("texts", [](AbcG::OCompoundProperty compound) { AbcG::OStringProperty(compound, ".ops").set("text"); });
    });
    const OpenHandle handle(files_);
    ASSERT_TRUE(AbcInput::get_animation_header(*handle, "/few_values", header_));
    for (const double time : {0.0, 0.5, 1.0})
        EXPECT_EQ(evaluate(handle, time, {})[1][3], 0.0); // the missing matrix is all zeros
    ASSERT_TRUE(AbcInput::get_animation_header(*handle, "/unknown_operation", header_));
    for (const double time : {0.0, 0.5, 1.0})
        EXPECT_EQ(evaluate(handle, time, {}), Matrix());
    EXPECT_FALSE(AbcInput::get_animation_header(*handle, "/texts", header_));
    EXPECT_FALSE(handle->is_object_valid());
}

TEST_F(XformReader, EvaluationsSurviveWhatOtherThreadsDoToTheHandle)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        add_xform(top, "x", {translation(1), translation(3), translation(3)});
    });
    const OpenHandle handle(files_);
    ASSERT_TRUE(AbcInput::get_animation_header(*handle, "/x", header_));
    const AbcG::IXform xform(static_cast<AbcG::IArchive*>(handle->get_archive())->getTop(), "x");
    std::atomic<bool> stop{false};
    std::thread other([&] {
        while (!stop) {
            handle->set_object(new AbcG::IXform(xform), AbcInputArchiveHandle::OBJECT_TYPE_XFORM);
            handle->delete_object();
        }
    });
    int found = 0;
    for (int i = 0; i < 3000 || (found == 0 && i < 3000000); ++i) {
        Matrix matrix;
        AbcPivotData data;
        if (AbcInput::evaluate_pivot_matrix(*handle, 1.25, matrix)) {
            ++found;
            EXPECT_EQ(matrix[0][3], 2.0);
        }
        if (AbcInput::evaluate_pivot_data(*handle, 1.25, data)) {
            EXPECT_EQ(data.transform.get_translation().x, 2.0);
        }
        EXPECT_TRUE(AbcInput::is_object_visible_at(*handle, 1.25));
    }
    stop = true;
    other.join();
    EXPECT_GT(found, 0);
}
