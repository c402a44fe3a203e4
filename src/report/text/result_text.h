#pragma once

#include <string_view>
#include <vector>

#include "report/report_file.h"

// The result sections of the text reports. Each record gets a table of one row, the matched motif, and a drawing of the
// alignment. All six reports share this code; a ResultForm says how they differ.

namespace varnolix {

enum class MotifDetail { matrices, consensus };
enum class ComparedWith { inputMotifs, collection };

struct ResultForm {
    MotifDetail detail;
    ComparedWith comparedWith;
};

/// The modes of a result list: what its records are printed as.
inline constexpr int pairsMode = 1;
inline constexpr int topMode = 2;
inline constexpr int eachMotifMode = 3;

/// What a result list needs besides its records.
struct ResultContext {
    const std::vector<data>& inputMotifs;
    const std::vector<data>& matchedMotifs;  ///< the input motifs again, or the collection
    std::vector<std::string>& matrixTexts;   ///< of the matched motifs, for keptMatrixBlock()
    std::size_t longestName;                 ///< length of the longest name of an input motif
    const char* taxonLabel;
};

/// Appends the records of a list to the stream. Modes 2 and 3 with an id above 0 print the matches of that motif. Mode
/// 1 with id 0 prints the pairs, but only in reports between input motifs. Any other combination prints nothing.
/// Against a collection, records that do not store the motif first are skipped.
void appendResultList(std::ostream& stream, const ResultForm& form, const ResultContext& context,
                      const std::vector<dataCombinedScore>& list, int mode, long id);

/// The same for a report of this run: opens it, and takes motifs and names from the shared records.
void writeResultList(const ReportFile& report, const ResultForm& form, const std::vector<dataCombinedScore>& list,
                     int mode, long id);

/// "Species" or "Taxon", as the collection of this name calls it.
const char* taxonLabel(std::string_view collectionName);

}  // namespace varnolix
