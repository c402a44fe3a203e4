#include "job/tables/column_listing.h"

#include "job/families/family_tables.h"
#include "job/tables/combined_motifs.h"
#include "job/tables/matches_table.h"
#include "job/tables/motifs_table.h"

namespace varnolix::job {

namespace {

template <class Columns>
std::vector<ColumnNote> notesOf(const Columns& columns) {
    std::vector<ColumnNote> notes;
    for (const auto& column : columns) notes.push_back(column.note);
    return notes;
}

/// The bar ends a cell of the page.
std::string cellText(const std::string& text) {
    std::string cell;
    for (const char c : text) cell += c == '|' ? std::string("\\|") : std::string(1, c);
    return cell;
}

}  // namespace

std::vector<DescribedTable> describedTables() {
    return {{"matches.tsv", notesOf(matchColumns())},   {"motifs.tsv", notesOf(motifColumns())},
            {"skipped.tsv", notesOf(skippedColumns())}, {"combined_motifs.tsv", notesOf(combinedColumns())},
            {"families.tsv", notesOf(familyColumns())}, {"family_members.tsv", notesOf(familyMemberColumns())}};
}

std::string describedColumns(const DescribedTable& table) {
    std::string text = "| Column | Meaning | Values |\n|---|---|---|\n";
    for (const ColumnNote& note : table.columns) {
        text +=
            std::string("| `") + note.name + "` | " + cellText(note.meaning) + " | " + cellText(note.range) + " |\n";
    }
    return text;
}

}  // namespace varnolix::job
