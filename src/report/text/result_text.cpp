#include "report/text/result_text.h"

#include <initializer_list>

#include "report/matched_motif.h"
#include "report/text/motif_text.h"
#include "report/text/text_columns.h"

namespace varnolix {

namespace {

constexpr std::size_t nameMargin = 10;

struct TextColumn {
    std::string_view title;
    std::size_t width;
    std::string value;
};

/// Appends the column titles and the row below them.
void appendTable(std::string& text, const std::vector<TextColumn>& columns) {
    for (const TextColumn& column : columns) appendPadded(text, column.title, column.width);
    text += '\n';
    for (const TextColumn& column : columns) appendPadded(text, column.value, column.width);
    text += '\n';
}

void appendAlignmentColumns(std::vector<TextColumn>& columns, const dataCombinedScore& record, std::string score) {
    columns.push_back({"Matching format of first motif", 40, formatText(record.matchingFormat1)});
    columns.push_back({"Matching format of second motif", 40, formatText(record.matchingFormat2)});
    columns.push_back({"Direction", 15, directionText(record.direction)});
    columns.push_back({"Position #", 15, std::to_string(record.position)});
    columns.push_back({"# of overlap", 15, std::to_string(record.overlap)});
    columns.push_back({"Similarity score", 15, std::move(score)});
}

std::string hyphenRule() {
    return std::string(ruleWidth, '-') + "\n";
}

/// Appends records to a stream and keeps track of its notation: the cells of a matrix switch it to fixed, with six
/// decimals, and it stays so.
class ResultWriter {
  public:
    ResultWriter(std::ostream& stream, const ResultForm& form, const ResultContext& context)
        : stream_(stream), form_(form), context_(context) {}
    ~ResultWriter() { stream_ << text_; }
    ResultWriter(const ResultWriter&) = delete;
    ResultWriter& operator=(const ResultWriter&) = delete;

    void writeMatch(const dataCombinedScore& record, long id);
    void writePair(const dataCombinedScore& record);

  private:
    bool againstCollection() const { return form_.comparedWith == ComparedWith::collection; }
    std::string score(const dataCombinedScore& record) const { return numberLike(stream_, record.combinedScore); }
    void appendMotif(const data& motif);
    void appendPairMember(const data& motif);

    std::ostream& stream_;
    const ResultForm& form_;
    const ResultContext& context_;
    std::string text_;
};

void ResultWriter::appendMotif(const data& motif) {
    if (form_.detail == MotifDetail::consensus) {
        text_ += consensusBlock(motif);
        return;
    }
    text_ += keptMatrixBlock(context_.matchedMotifs, motif, context_.matrixTexts);
    if (!motif.matrix.empty()) stream_ << std::fixed;
}

void ResultWriter::writeMatch(const dataCombinedScore& record, long id) {
    if (againstCollection() && !isPrintedOfCollection(record, id)) return;
    const MatchedMotif match = matchedMotif(record, id, context_.inputMotifs, context_.matchedMotifs);
    const std::size_t nameWidth = context_.longestName + nameMargin;
    std::vector<TextColumn> columns;
    if (againstCollection()) {
        columns.push_back({"Motif ID", 15, match.motif.motifID});
    } else {
        columns.push_back({"Dataset #", 15, std::to_string(match.motif.datasetNum)});
        columns.push_back({"Motif ID", 15, std::to_string(match.motif.matrixID)});
    }
    columns.push_back({"Motif name", nameWidth, match.motif.motifName});
    appendAlignmentColumns(columns, record, score(record));
    appendTable(text_, columns);
    text_ += '\n';
    if (againstCollection()) text_ += std::string(context_.taxonLabel) + ": " + match.motif.taxon + "\n\n";
    appendMotif(match.motif);
    text_ += "\nAlignment:\n" + match.lines.other + "\n" + match.lines.own + "\n\n" + hyphenRule();
    flushWhenLarge(stream_, text_);
}

void ResultWriter::appendPairMember(const data& motif) {
    if (form_.detail == MotifDetail::matrices) {
        text_ += "Motif ID " + std::to_string(motif.matrixID) + "\t\tMotif name " + motif.motifName + "\n";
    }
    appendMotif(motif);
    text_ += hyphenRule();
}

void ResultWriter::writePair(const dataCombinedScore& record) {
    const std::vector<data>& motifs = context_.inputMotifs;
    const data& first = motifOf(motifs, record.matrixID1);
    const data& second = motifOf(motifs, record.matrixID2);
    std::vector<TextColumn> columns = {
        {"Dataset #", 15, std::to_string(motifOf(motifs, outerMatrixID(record)).datasetNum)},
        {"Comparing dataset #", 25, std::to_string(motifOf(motifs, innerMatrixID(record)).datasetNum)},
        {"Motif ID in dataset", 25, std::to_string(first.matrixID)},
        {"Motif ID in comparing dataset", 35, std::to_string(second.matrixID)},
        {"Motif name in dataset", 40, first.motifName},
        {"Motif name in comparing dataset", 40, second.motifName},
    };
    appendAlignmentColumns(columns, record, score(record));
    appendTable(text_, columns);
    text_ += '\n';
    appendPairMember(first);
    appendPairMember(second);
    flushWhenLarge(stream_, text_);
}

}  // namespace

void appendResultList(std::ostream& stream, const ResultForm& form, const ResultContext& context,
                      const std::vector<dataCombinedScore>& list, int mode, long id) {
    ResultWriter writer(stream, form, context);
    const bool isMatches = (mode == topMode || mode == eachMotifMode) && id > 0;
    const bool isPairs = mode == pairsMode && id == 0 && form.comparedWith == ComparedWith::inputMotifs;
    for (const dataCombinedScore& record : list) {
        if (isMatches) writer.writeMatch(record, id);
        if (isPairs) writer.writePair(record);
    }
}

void writeResultList(const ReportFile& report, const ResultForm& form, const std::vector<dataCombinedScore>& list,
                     int mode, long id) {
    const bool isCollection = form.comparedWith == ComparedWith::collection;
    AppendingReport open(report);
    appendResultList(open.stream(), form,
                     {Datasets, isCollection ? DatabaseDatasets : Datasets,
                      isCollection ? DatabaseDatasetsMatrixText : DatasetsMatrixText,
                      static_cast<std::size_t>(motifNameLength), taxonLabel(DBName)},
                     list, mode, id);
}

const char* taxonLabel(std::string_view collectionName) {
    return collectionName == "transfac" || collectionName.starts_with("uniprobe") ? "Species" : "Taxon";
}

}  // namespace varnolix
