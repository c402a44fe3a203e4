#pragma once

#include "report/report_file.h"

// The result sections of the text reports: for each record a table of one row, the matched motif, and the drawing of
// the alignment. Six reports share this; they differ by what a ResultForm tells.

namespace varnolix {

enum class MotifDetail { matrices, consensus };
enum class ComparedWith { inputMotifs, collection };

struct ResultForm {
    MotifDetail detail;
    ComparedWith comparedWith;
};

/// Forms of the list.
inline constexpr int pairsMode = 1;
inline constexpr int topMode = 2;
inline constexpr int eachMotifMode = 3;

/// Appends the records of a list to the report. Modes 2 and 3 with an id above 0 print the matches of the motif with
/// this id; mode 1 with id 0 prints the pairs, in the reports between input motifs; anything else prints nothing.
/// Against a collection, records that do not store the motif first are passed over.
void writeResultList(const ReportFile& report, const ResultForm& form, const std::vector<dataCombinedScore>& list,
                     int mode, long id);

/// "Species" or "Taxon", by the collection.
const char* taxonLabel();

}  // namespace varnolix
