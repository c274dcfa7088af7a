/// Run-time facts of the plain data types, taken from their traits.
#include <Alembic/Util/PlainOldDataType.h>

#include <array>
#include <utility>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

namespace {

struct PodFacts
{
    const char* name;
    size_t bytes;
    void (*set_default)(void*);
};

constexpr std::array<const char*, kNumPlainOldDataTypes> pod_names = {
    "bool_t",   "uint8_t", "int8_t",    "uint16_t",  "int16_t",   "uint32_t", "int32_t",
    "uint64_t", "int64_t", "float16_t", "float32_t", "float64_t", "string",   "wstring",
};

template <size_t... I>
constexpr std::array<PodFacts, kNumPlainOldDataTypes> all_facts(std::index_sequence<I...>)
{
    return {PodFacts{pod_names[I], PODTraitsFromEnum<PlainOldDataType(I)>::numBytes(),
                     &PODSetDefaultPOD<PlainOldDataType(I)>}...};
}

// One entry per type, in the order of the stored numbers.
constexpr std::array<PodFacts, kNumPlainOldDataTypes> facts =
    all_facts(std::make_index_sequence<kNumPlainOldDataTypes>());

bool is_type(PlainOldDataType pod)
{
    return static_cast<size_t>(pod) < facts.size();
}

} // namespace

size_t PODNumBytes(PlainOldDataType pod)
{
    return is_type(pod) ? facts[pod].bytes : 0;
}

const char* PODName(PlainOldDataType pod)
{
    return is_type(pod) ? facts[pod].name : "UNKNOWN";
}

PlainOldDataType PODFromName(const std::string& n)
{
    for (size_t i = 0; i < facts.size(); ++i)
        if (n == facts[i].name) return static_cast<PlainOldDataType>(i);
    return kUnknownPOD;
}

void PODSetDefault(PlainOldDataType pod, void* bytes)
{
    if (is_type(pod)) facts[pod].set_default(bytes);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
