#include "crease_edges.h"

#include <algorithm>
#include <cstdint>
#include <unordered_set>

namespace {

/// The edges of a mesh, in no direction.
class EdgeSet
{
public:
    EdgeSet(const CoreArray<unsigned int>& face_counts, const CoreArray<unsigned int>& face_indices)
    {
        std::size_t first = 0;
        for (const unsigned int count : face_counts) {
            for (unsigned int i = 0; i < count; ++i)
                keys_.insert(key(face_indices[first + i], face_indices[first + (i + 1) % count]));
            first += count;
        }
    }

    bool has(int a, int b) const
    {
        return a >= 0 && b >= 0 && a != b &&
               keys_.count(key(static_cast<unsigned int>(a), static_cast<unsigned int>(b))) > 0;
    }

    static std::uint64_t key(unsigned int a, unsigned int b)
    {
        return (std::uint64_t{std::min(a, b)} << 32) | std::max(a, b);
    }

private:
    std::unordered_set<std::uint64_t> keys_;
};

/// Where each chain starts, and the end of the last.
using Chains = std::vector<std::size_t>;

Chains split_evenly(std::size_t index_count, std::size_t chain_count)
{
    Chains chains;
    for (std::size_t i = 0; i <= chain_count; ++i)
        chains.push_back(index_count / chain_count * i);
    return chains;
}

Chains split_at_gaps(const CoreArray<int>& indices, const EdgeSet& edges)
{
    Chains chains = {0};
    for (std::size_t i = 1; i < indices.get_count(); ++i)
        if (!edges.has(indices[i - 1], indices[i])) chains.push_back(i);
    chains.push_back(indices.get_count());
    return chains;
}

bool are_all_edges(const CoreArray<int>& indices, const Chains& chains, const EdgeSet& edges)
{
    for (std::size_t chain = 0; chain + 1 < chains.size(); ++chain)
        for (std::size_t i = chains[chain] + 1; i < chains[chain + 1]; ++i)
            if (!edges.has(indices[i - 1], indices[i])) return false;
    return true;
}

} // namespace

bool find_crease_edges(const CoreArray<int>& indices, const CoreArray<float>& sharpnesses,
                       const CoreArray<unsigned int>& face_counts, const CoreArray<unsigned int>& face_indices,
                       std::vector<CreaseEdge>& edges)
{
    edges.clear();
    const std::size_t index_count = indices.get_count(), sharpness_count = sharpnesses.get_count();
    if (index_count < 2 || sharpness_count == 0) return index_count == 0 && sharpness_count == 0;

    const EdgeSet mesh_edges(face_counts, face_indices);
    bool is_per_edge = false;
    Chains chains;
    if (index_count % sharpness_count == 0 && index_count / sharpness_count >= 2)
        chains = split_evenly(index_count, sharpness_count);
    if (index_count != 2 * sharpness_count && !(chains.size() > 1 && are_all_edges(indices, chains, mesh_edges))) {
        chains = split_at_gaps(indices, mesh_edges);
        const std::size_t chain_count = chains.size() - 1;
        is_per_edge = chain_count != sharpness_count && index_count - chain_count == sharpness_count;
        if (chain_count != sharpness_count && !is_per_edge) return false;
    }

    std::unordered_set<std::uint64_t> seen; // an edge has one sharpness: the first
    for (std::size_t chain = 0, edge = 0; chain + 1 < chains.size(); ++chain)
        for (std::size_t i = chains[chain] + 1; i < chains[chain + 1]; ++i, ++edge) {
            const float sharpness = sharpnesses[is_per_edge ? edge : chain];
            if (!mesh_edges.has(indices[i - 1], indices[i]) || !(sharpness > 0.0f)) continue;
            const auto a = static_cast<unsigned int>(indices[i - 1]), b = static_cast<unsigned int>(indices[i]);
            if (seen.insert(EdgeSet::key(a, b)).second) edges.push_back({{a, b}, sharpness});
        }
    return true;
}
