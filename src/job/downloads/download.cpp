#include "job/downloads/download.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

#include "job/downloads/reading/layout_detection.h"
#include "job/downloads/reading/readers.h"
#include "job/downloads/reading/source_lines.h"

namespace varnolix::job {

namespace {

/// A reader for each layout, and what kind of file it reads. In the order of Layout.
enum class Kind { numberRecords, letterRecords, tagged, meme, tables, bare };

struct LayoutReader {
    Layout layout;
    Reader read;
    Kind kind;
};

constexpr std::array<LayoutReader, 12> layoutReaders = {{
    {Layout::jaspar, readNumberRecords, Kind::numberRecords},
    {Layout::meme, readMeme, Kind::meme},
    {Layout::transfac, readTransfac, Kind::tagged},
    {Layout::homer, readNumberRecords, Kind::numberRecords},
    {Layout::hocomoco, readNumberRecords, Kind::numberRecords},
    {Layout::cisbp, readCisbp, Kind::tables},
    {Layout::uniprobe, readUniprobe, Kind::tables},
    {Layout::clusterBuster, readNumberRecords, Kind::numberRecords},
    {Layout::sites, readLetterRecords, Kind::letterRecords},
    {Layout::consensus, readLetterRecords, Kind::letterRecords},
    {Layout::rows, readNumberRecords, Kind::bare},
    {Layout::columns, readNumberRecords, Kind::bare},
}};

const LayoutReader& readerOf(Layout layout) {
    return layoutReaders[static_cast<std::size_t>(layout)];
}

/// The blocks between empty lines.
std::vector<Lines> blocksOf(const Lines& lines) {
    std::vector<Lines> blocks;
    bool isOpen = false;
    for (const TextLine& line : lines) {
        if (!line.text.empty() && !isOpen) blocks.emplace_back();
        isOpen = !line.text.empty();
        if (isOpen) blocks.back().push_back(line);
    }
    return blocks;
}

template <class Item>
void appendAll(std::vector<Item>& all, std::vector<Item>& more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// Reads a file in which every block has a layout of its own, as motif files for the dialogue may be. Only a file with
/// layouts of different kinds, all of whose blocks are motifs, is one; otherwise a damaged motif would pass for one of
/// another layout.
std::optional<Download> readMixed(const Lines& lines) {
    Download mixed;
    std::set<Kind> kinds;
    for (const Lines& block : blocksOf(lines)) {
        const std::optional<Layout> layout = detectedLayout(block);
        if (!layout) return std::nullopt;
        Download part;
        part.layout = *layout;
        readerOf(*layout).read(block, part);
        if (!part.refused.empty() || part.motifs.empty()) return std::nullopt;
        if (kinds.empty()) mixed.layout = *layout;
        kinds.insert(readerOf(*layout).kind);
        appendAll(mixed.motifs, part.motifs);
    }
    if (kinds.size() < 2) return std::nullopt;
    return mixed;
}

/// Gives the name of the file to motifs that have none, with a number behind it if there are several.
void nameTheNameless(Download& found, const std::string& baseName) {
    std::vector<std::pair<std::size_t, std::string*>> nameless;
    for (DownloadedMotif& motif : found.motifs) {
        if (motif.id.empty()) nameless.emplace_back(motif.line, &motif.id);
    }
    for (RefusedMotif& motif : found.refused) {
        if (motif.id.empty()) nameless.emplace_back(motif.line, &motif.id);
    }
    std::sort(nameless.begin(), nameless.end());
    const std::string name = baseName.empty() ? "motif" : baseName;
    std::size_t number = 0;
    for (const auto& [line, id] : nameless) {
        ++number;
        *id = nameless.size() == 1 ? name : name + "_" + std::to_string(number);
    }
}

void refuseFile(Download& found, std::string reason) {
    found.refused.push_back({"", 1, std::move(reason)});
}

}  // namespace

Download readDownload(std::string_view text, const std::string& baseName, const Layout* layout) {
    Download found;
    if (layout != nullptr) found.layout = *layout;
    if (std::string reason = reasonAgainstText(text); !reason.empty()) {
        refuseFile(found, std::move(reason));
        return found;
    }
    const std::string unified = unifiedText(text);
    const Lines lines = linesOf(unified);
    const std::optional<Layout> known = layout != nullptr ? *layout : detectedLayout(lines);
    if (!known) {
        refuseFile(found, "no motif in it: none of the layouts is like that");
        return found;
    }
    found.layout = *known;
    readerOf(*known).read(lines, found);
    // The reader of MEME passes over all text that is no matrix, as whole reports have much of it.
    if (layout == nullptr && (!found.refused.empty() || *known == Layout::meme)) {
        if (std::optional<Download> mixed = readMixed(lines)) found = std::move(*mixed);
    }
    nameTheNameless(found, baseName);
    if (found.motifs.empty() && found.refused.empty()) refuseFile(found, "no motif in it");
    return found;
}

}  // namespace varnolix::job
