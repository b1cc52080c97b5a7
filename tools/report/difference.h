// What two sequences have in common.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace reader {

/// The elements of two sequences that stay, as pairs of their places, in order. As many as can
/// stay, but for sequences that differ in thousands of elements which both hold: there the search
/// gives up the best answer to stay within a bounded memory.
std::vector<std::pair<std::size_t, std::size_t>> commonElements(const std::vector<int>& before,
                                                                const std::vector<int>& after);

}  // namespace reader
