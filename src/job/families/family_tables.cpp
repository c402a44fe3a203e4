#include "job/families/family_tables.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "job/downloads/information.h"
#include "job/tables/combined_motifs.h"
#include "job/tables/pair_placement.h"

namespace varnolix::job {

namespace {

Cell whole(std::size_t number) {
    return static_cast<std::int64_t>(number);
}

constexpr TableColumn<FamilyRow> ofFamilies[] = {
    {{"family", "name of the family; id of its common motif in the motif files", "family_1, family_2 ..."},
     [](const FamilyRow& row) -> Cell { return row.name; }},
    {{"size", "number of its members", "whole, from 1"},
     [](const FamilyRow& row) -> Cell { return whole(row.family.members.size()); }},
    {{"cut_height", "distance at which the tree joins all its members", "0 to 1; 0 for a single one"},
     [](const FamilyRow& row) -> Cell { return row.family.cutHeight; }},
    {{"length", "number of columns of the common motif", "whole, from 1"},
     [](const FamilyRow& row) -> Cell { return whole(row.family.commonMotif.size()); }},
    {{"information_bits", "information content of the common motif, as in motifs.tsv", "0 to 2 for each column"},
     [](const FamilyRow& row) -> Cell { return row.bits; }},
    {{"consensus", "consensus of the common motif", "IUPAC letters"},
     [](const FamilyRow& row) -> Cell { return row.consensus; }},
    {{"members", "names of the members in the reports, in the order of the tree", "words with blanks between them"},
     [](const FamilyRow& row) -> Cell { return row.members; }},
};

constexpr TableColumn<FamilyMemberRow> ofMembers[] = {
    {{"family", "name of the family, as in families.tsv", "family_1, family_2 ..."},
     [](const FamilyMemberRow& row) -> Cell { return row.family; }},
    {{"motif_number_1based", "number of the motif in the reports (\"Motif ID\"), as in motifs.tsv",
      "whole, counted from 1"},
     [](const FamilyMemberRow& row) -> Cell { return std::int64_t{row.motif.matrixID}; }},
    {{"dataset", "data set of the motif", "text"},
     [](const FamilyMemberRow& row) -> Cell { return row.names.dataset; }},
    {{"motif_id", "name of the motif as in its file", "text"},
     [](const FamilyMemberRow& row) -> Cell { return row.names.id; }},
    {{"motif_name", "second name of the motif, as in its file", "text, may be empty"},
     [](const FamilyMemberRow& row) -> Cell { return row.names.name; }},
    {{"motif_report_name", "name of the motif in the reports", "one word"},
     [](const FamilyMemberRow& row) -> Cell { return row.names.reportName; }},
    {{"orientation", "strand of the motif that was averaged; the reverse complement is the true one",
      "forward, reverse complement"},
     [](const FamilyMemberRow& row) -> Cell {
         return strandText(row.member.isReversed ? MatchingFormat::reverseComplement : MatchingFormat::originalMotif);
     }},
    {{"offset_0based", "column of the common motif on which the first column of that strand lies",
      "whole, 0-based; negative if it lies before the common motif"},
     [](const FamilyMemberRow& row) -> Cell { return std::int64_t{row.member.offset}; }},
    {{"distance", "distance from the common motif", "0 to 1"},
     [](const FamilyMemberRow& row) -> Cell { return row.member.distance; }},
};

const data& motifOfMember(const JobResults& results, const FamilyMember& member) {
    return results.motifs[member.motif];
}

const FamilyMember& nearestMember(const Family& family) {
    return *std::ranges::min_element(family.members, {}, &FamilyMember::distance);
}

std::string leafName(const data& motif) {
    std::string name = "I" + std::to_string(motif.matrixID) + "_" + motif.motifName;
    for (char& letter : name) {
        if (std::string_view(" \t,:;()[]{}'\"").find(letter) != std::string_view::npos) letter = '-';
    }
    return name;
}

void appendNumber(std::string& text, double number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), end.ptr);
}

/// For each merge the name of the family that it completes; empty if there is none.
std::vector<std::string> familyNamesOfMerges(const Families& families, std::size_t motifs) {
    std::vector<std::size_t> familyOf(motifs);
    for (std::size_t n = 0; n < families.families.size(); ++n) {
        for (const FamilyMember& member : families.families[n].members) familyOf[member.motif] = n;
    }
    // Of the merges up to the cut, the last one of a family completes it.
    std::vector<std::size_t> someMotif(families.merges.size());
    std::vector<std::size_t> last(families.families.size(), families.merges.size());
    for (std::size_t n = 0; n < families.merges.size() && families.merges[n].height <= families.cut; ++n) {
        const int left = families.merges[n].left;
        someMotif[n] = left < 0 ? static_cast<std::size_t>(-left - 1) : someMotif[static_cast<std::size_t>(left - 1)];
        last[familyOf[someMotif[n]]] = n;
    }
    std::vector<std::string> names(families.merges.size());
    for (std::size_t family = 0; family < last.size(); ++family) {
        if (last[family] < names.size()) names[last[family]] = familyName(family);
    }
    return names;
}

}  // namespace

std::span<const TableColumn<FamilyRow>> familyColumns() {
    return ofFamilies;
}

std::span<const TableColumn<FamilyMemberRow>> familyMemberColumns() {
    return ofMembers;
}

std::string familiesTsv(const Families& families, const JobResults& results) {
    std::string text;
    appendTsvHeader(text, ofFamilies);
    for (std::size_t n = 0; n < families.families.size(); ++n) {
        const Family& family = families.families[n];
        std::string members;
        for (const FamilyMember& member : family.members) {
            members += (members.empty() ? "" : " ") + motifOfMember(results, member).motifName;
        }
        appendTsvRow(text, ofFamilies,
                     FamilyRow{familyName(n), family, std::move(members), columnLetters(family.commonMotif),
                               informationOf(family.commonMotif)});
    }
    return text;
}

std::string familyMembersTsv(const Families& families, const JobResults& results) {
    std::string text;
    appendTsvHeader(text, ofMembers);
    for (std::size_t n = 0; n < families.families.size(); ++n) {
        for (const FamilyMember& member : families.families[n].members) {
            const data& motif = motifOfMember(results, member);
            appendTsvRow(text, ofMembers, FamilyMemberRow{familyName(n), member, motif, namesOfInput(results, motif)});
        }
    }
    return text;
}

std::vector<DownloadedMotif> familyMotifs(const Families& families, const JobResults& results) {
    std::vector<DownloadedMotif> motifs;
    for (std::size_t n = 0; n < families.families.size(); ++n) {
        const Family& family = families.families[n];
        const MotifNames nearest = namesOfInput(results, motifOfMember(results, nearestMember(family)));
        motifs.push_back(motifOfShares(familyName(n), std::string(nearest.id), family.commonMotif));
    }
    return motifs;
}

std::string familyTree(const Families& families, const JobResults& results) {
    const std::vector<std::string> names = familyNamesOfMerges(families, results.motifs.size());
    const auto heightOf = [&](int node) {
        return node < 0 ? 0.0 : families.merges[static_cast<std::size_t>(node - 1)].height;
    };
    std::string text;
    const auto close = [&](const std::string& name, int node, double parent) {
        text += name;
        text += ':';
        appendNumber(text, (parent - heightOf(node)) / 2.0);
    };
    // Nodes whose sides are being written. A tree may be as high as it has motifs, so there is no recursion.
    struct Open {
        std::size_t merge;
        int sidesBegun;
    };
    std::vector<Open> open;
    if (!families.merges.empty()) open.push_back({families.merges.size() - 1, 0});
    while (!open.empty()) {
        Open& node = open.back();
        const TreeMerge& merge = families.merges[node.merge];
        if (node.sidesBegun == 2) {
            text += ')';
            const std::size_t closed = node.merge;
            open.pop_back();
            if (open.empty()) {
                text += names[closed];
            } else {
                close(names[closed], static_cast<int>(closed) + 1, families.merges[open.back().merge].height);
            }
            continue;
        }
        text += node.sidesBegun == 0 ? '(' : ',';
        const int side = node.sidesBegun == 0 ? merge.left : merge.right;
        ++node.sidesBegun;
        if (side < 0) {
            close(leafName(results.motifs[static_cast<std::size_t>(-side - 1)]), side, merge.height);
        } else {
            open.push_back({static_cast<std::size_t>(side - 1), 0});
        }
    }
    return text + ";\n";
}

}  // namespace varnolix::job
