#include "job/downloads/layouts.h"

#include <algorithm>
#include <array>

namespace varnolix::job {

namespace {

struct NamedLayout {
    Layout layout;
    const char* name;
};

/// In the order of Layout.
constexpr std::array<NamedLayout, 12> namedLayouts = {{
    {Layout::jaspar, "jaspar"},
    {Layout::meme, "meme"},
    {Layout::transfac, "transfac"},
    {Layout::homer, "homer"},
    {Layout::hocomoco, "hocomoco"},
    {Layout::cisbp, "cis-bp"},
    {Layout::uniprobe, "uniprobe"},
    {Layout::clusterBuster, "cluster-buster"},
    {Layout::sites, "sites"},
    {Layout::consensus, "consensus"},
    {Layout::rows, "rows"},
    {Layout::columns, "columns"},
}};

}  // namespace

std::optional<Layout> layoutOf(std::string_view name) {
    const auto* const found = std::find_if(namedLayouts.begin(), namedLayouts.end(),
                                           [name](const NamedLayout& named) { return name == named.name; });
    if (found == namedLayouts.end()) return std::nullopt;
    return found->layout;
}

const char* nameOf(Layout layout) {
    return namedLayouts[static_cast<std::size_t>(layout)].name;
}

}  // namespace varnolix::job
