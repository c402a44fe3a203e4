#include "job/page/page_data.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "input/getRevCompMotif.h"
#include "job/downloads/information.h"
#include "job/families/family_tables.h"
#include "job/page/compact_table.h"
#include "job/page/member_frame.h"
#include "job/tables/matches_table.h"
#include "job/tables/motifs_table.h"

namespace varnolix::job {

namespace {

void appendText(std::string& json, const char* name, std::string_view text) {
    json += name;
    appendJsonValue(json, text);
}

/// The values with commas between them.
template <class Values, class Append>
std::string listJson(const Values& values, Append append) {
    std::string json = "[";
    const char* before = "";
    for (const auto& value : values) {
        json += before;
        append(json, value);
        before = ",";
    }
    return json + "]";
}

std::string motifsJson(const JobResults& results) {
    CompactTable table(motifColumns());
    for (const MotifRow& row : motifRows(results)) table.add(motifColumns(), row);
    return table.json();
}

std::string skippedJson(const std::vector<SkippedMotif>& skipped) {
    CompactTable table(skippedColumns());
    for (const SkippedMotif& motif : skipped) table.add(skippedColumns(), motif);
    return table.json();
}

std::string matricesJson(const std::vector<data>& motifs) {
    return listJson(motifs, [](std::string& json, const data& motif) {
        json += "{\"matrix\":" + matrixJson(motif.matrix);
        appendText(json, ",\"swaps\":", swappedPairs(motif.matrix));
        json += '}';
    });
}

bool isReference(const JobResults& results, const data& motif) {
    const std::vector<data>& references = results.references;
    return !references.empty() && &motif >= references.data() && &motif < references.data() + references.size();
}

/// A reference motif that is the target of a match.
void appendReference(std::string& json, const JobResults& results, const data& motif) {
    const JobMotif& source = results.sources.references[static_cast<std::size_t>(motif.matrixID - 1)];
    json += "{\"number\":" + std::to_string(motif.matrixID);
    appendText(json, ",\"name\":", source.motif.id);
    appendText(json, ",\"second\":", source.motif.name);
    appendText(json, ",\"file\":", source.file);
    json += ",\"line\":" + std::to_string(source.motif.line) + ",\"bits\":";
    appendJsonValue(json, informationOf(motif.matrix));
    appendText(json, ",\"consensus\":", motif.consensus);
    json += ",\"matrix\":" + matrixJson(motif.matrix);
    appendText(json, ",\"swaps\":", swappedPairs(motif.matrix));
    json += '}';
}

/// The table of matches, and the references that stand in it.
std::string matchesJson(const PageContent& content, const JobResults& results) {
    CompactTable table(matchColumns());
    std::map<int, const data*> references;
    std::string isAgainstReference;
    std::size_t count = 0;
    visitMatches(results, content.significance, content.mostQ, [&](const MatchRow& row) {
        if (++count > mostMatchesOfPage) return;
        table.add(matchColumns(), row);
        const bool isReferenceRow = isReference(results, row.target);
        isAgainstReference += isReferenceRow ? '1' : '0';
        if (isReferenceRow) references[row.target.matrixID] = &row.target;
    });
    const auto append = [&](std::string& json, const auto& entry) { appendReference(json, results, *entry.second); };
    std::string json = "{\"total\":" + std::to_string(count);
    appendText(json, ",\"against_reference\":", isAgainstReference);
    json += ",\n\"table\":" + table.json();
    json += ",\n\"references\":" + listJson(references, append);
    return json + "}";
}

/// The columns with all digits, so that a download has the same numbers as the motif files.
std::string allDigitsJson(const DownloadedMotif& motif) {
    return listJson(motif.columns, [](std::string& text, const NumberColumn& column) {
        text += column[0] + ',' + column[1] + ',' + column[2] + ',' + column[3];
    });
}

/// Without the end of the object.
void beginMember(std::string& json, int motif, MatchingFormat strand, int offset) {
    json += "{\"motif\":" + std::to_string(motif);
    appendText(json, ",\"strand\":", strandText(strand));
    json += ",\"offset\":" + std::to_string(offset);
}

void appendMember(std::string& json, const FramedMember& member) {
    beginMember(json, member.motif, member.strand, member.offset);
    json += '}';
}

std::string mergedJson(const JobResults& results, const std::vector<MergedList>& lists) {
    const std::vector<DownloadedMotif> motifs = combinedMotifs(results, lists);
    auto motif = motifs.begin();
    std::string json = "[";
    for (const MergedList& list : lists) {
        for (std::size_t place = 0; place < list.merged.size(); ++place) {
            const std::span<const combinedMatrices> steps = mergedSteps(list.merged[place]);
            if (steps.empty()) continue;
            json += motif == motifs.begin() ? "\n" : ",\n";
            appendText(json, "{\"id\":", motif->id);
            appendText(json, ",\"name\":", motif->name);
            appendText(json, ",\"list\":", listName(list.kind));
            json += ",\"left_out\":" + std::to_string(list.groups[place].size() - steps.size());
            json += ",\"matrix\":" + allDigitsJson(*motif);
            json += ",\"members\":" + listJson(framedMembers(list.groups[place], steps), appendMember) + '}';
            ++motif;
        }
    }
    return json + "]";
}

MatchingFormat strandOf(const FamilyMember& member) {
    return member.isReversed ? MatchingFormat::reverseComplement : MatchingFormat::originalMotif;
}

std::string treesJson(const std::vector<PageTree>& trees) {
    return listJson(trees, [](std::string& json, const PageTree& tree) {
        appendText(json, "{\"name\":", tree.name);
        appendText(json, ",\"newick\":", tree.newick);
        json += tree.isOfFamilies ? ",\"of_families\":true" : ",\"of_families\":false";
        json += ",\"distances\":" + (tree.distances.empty() ? "null" : tree.distances) + '}';
    });
}

/// The cell between two commas.
std::string_view nextCell(std::string_view& line) {
    const std::size_t end = std::min(line.find(','), line.size());
    const std::string_view cell = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    return cell;
}

/// Not-a-number if the cell is none.
double numberOf(std::string_view cell) {
    double value = 0;
    const auto read = std::from_chars(cell.data(), cell.data() + cell.size(), value);
    const bool isNumber = read.ec == std::errc() && read.ptr == cell.data() + cell.size();
    return isNumber ? value : std::numeric_limits<double>::quiet_NaN();
}

/// The distances of a motif from those before it.
/// @param row its 0-based place
template <class DistanceTo>
void appendDistances(std::string& json, std::size_t row, DistanceTo distanceTo) {
    constexpr double distanceSteps = 10'000;
    json += row == 1 ? "[" : ",\n[";
    for (std::size_t place = 0; place < row; ++place) {
        json += place == 0 ? "" : ",";
        appendJsonValue(json, std::round(distanceTo(place) * distanceSteps) / distanceSteps);
    }
    json += ']';
}

}  // namespace

std::string matrixJson(const Matrix& matrix) {
    constexpr int digitsOfValue = 6;
    std::string json = "[";
    const char* before = "";
    for (const Column& column : matrix) {
        for (const double value : column) {
            std::array<char, 32> digits{};
            json += before;
            before = ",";
            if (!std::isfinite(value)) {
                json += "null";
                continue;
            }
            const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                           std::chars_format::general, digitsOfValue);
            json.append(digits.data(), end.ptr);
        }
    }
    return json + "]";
}

std::string familiesJson(const Families& families, const JobResults& results) {
    const std::vector<DownloadedMotif> motifs = familyMotifs(families, results);
    auto motif = motifs.begin();
    const auto appendMember = [&](std::string& json, const FamilyMember& member) {
        beginMember(json, results.motifs[member.motif].matrixID, strandOf(member), member.offset);
        json += ",\"distance\":";
        appendJsonValue(json, member.distance);
        json += '}';
    };
    return listJson(families.families, [&](std::string& json, const Family& family) {
        appendText(json, "\n{\"id\":", motif->id);
        appendText(json, ",\"name\":", motif->name);
        json += ",\"cut_height\":";
        appendJsonValue(json, family.cutHeight);
        appendText(json, ",\"consensus\":", columnLetters(family.commonMotif));
        json += ",\"matrix\":" + allDigitsJson(*motif);
        json += ",\"members\":" + listJson(family.members, appendMember) + '}';
        ++motif;
    });
}

std::string swappedPairs(const Matrix& matrix) {
    std::string pairs;
    for (const Column& column : matrix) pairs += swapsAT(column) ? 'w' : 's';
    return pairs;
}

std::string distanceRows(const std::string& table) {
    std::istringstream lines(table);
    std::string line;
    std::getline(lines, line);  // the labels
    std::getline(lines, line);  // the first motif, which has none before it
    std::string json = "[";
    for (std::size_t row = 1; std::getline(lines, line); ++row) {
        std::string_view rest = line;
        nextCell(rest);  // the label
        appendDistances(json, row, [&](std::size_t) { return numberOf(nextCell(rest)); });
    }
    return json + "]";
}

std::string distanceRows(std::span<const double> pairs) {
    std::string json = "[";
    for (std::size_t row = 1; pairsOf(row) < pairs.size(); ++row) {
        appendDistances(json, row, [&](std::size_t place) { return pairs[pairCell(row, place)]; });
    }
    return json + "]";
}

std::string pageData(const PageContent& content, const JobResults& results) {
    std::string json;
    appendText(json, "{\"name\":", content.jobName);
    json += ",\n\"record\":" + jobRecordText(content.record, results);
    json += ",\"skipped\":" + skippedJson(content.skipped);
    json += ",\n\"motifs\":" + motifsJson(results);
    json += ",\n\"matrices\":" + matricesJson(results.motifs);
    json += ",\n\"matches\":" + matchesJson(content, results);
    json += ",\n\"merged\":" + mergedJson(results, content.merged);
    json += ",\n\"families\":" + (content.families == nullptr ? "[]" : familiesJson(*content.families, results));
    json += ",\n\"trees\":" + treesJson(content.trees);
    return json + "}\n";
}

}  // namespace varnolix::job
