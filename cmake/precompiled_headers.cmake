# What many sources of a target include is parsed once for all of them. Presets that show whether each
# source includes what it needs go without: release, and tidy.

set(standard_headers <algorithm> <array> <cstdint> <functional> <map> <memory> <optional> <string>
  <string_view> <utility> <vector>)

# precompile_headers(<target> PRIVATE <header>...), or with REUSE_FROM and a target that has them. The
# options let ccache tell precompiled headers by their content.
function(precompile_headers target)
  target_precompile_headers(${target} ${ARGN})
  target_compile_options(${target} PRIVATE
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fpch-preprocess>
    $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Xclang;-fno-pch-timestamp>)
endfunction()
