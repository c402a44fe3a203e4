#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Motifs as they come: files that were downloaded from a collection or written by another program. The readers take
// every motif of a file or say why not, and they leave the numbers as they are written.

namespace varnolix::job {

/// The layouts that can be told apart, in the order in which `--help` names them.
enum class Layout {
    jaspar,
    meme,
    transfac,
    homer,
    hocomoco,
    cisbp,
    uniprobe,
    clusterBuster,
    sites,
    consensus,
    rows,     ///< four rows of numbers for A, C, G, T
    columns,  ///< four numbers a line
};

/// The values of A, C, G and T in one position, in plain decimal notation: digits with at most one point. An exponent
/// of the download is written out, so that no digit is lost; otherwise the text is the one of the download.
using NumberColumn = std::array<std::string, 4>;

/// One motif of a download.
struct DownloadedMotif {
    std::string id;    ///< as in the file, blanks and odd characters included; never empty
    std::string name;  ///< the second name, where the layout has one and it is given
    std::string taxon;
    std::vector<NumberColumn> columns;
    std::string siteCount;  ///< as in the file; empty if it is not given
    std::size_t line = 0;   ///< 1-based line where the motif begins
};

/// A motif that could not be taken.
struct RefusedMotif {
    std::string id;
    std::size_t line = 0;  ///< 1-based
    std::string reason;    ///< a clause in plain words, without a full stop
};

/// What is in a file.
struct Download {
    Layout layout = Layout::jaspar;
    std::vector<DownloadedMotif> motifs;
    std::vector<RefusedMotif> refused;
};

/// Reads the text of a file. The layout is told by the content unless one is named.
/// @param baseName the file's name without folder and extensions, for motifs that have no name of their own
Download readDownload(std::string_view text, const std::string& baseName, const Layout* layout = nullptr);

}  // namespace varnolix::job
