#include "input/writeMotifInput.h"

#include "input/printFileNameTypeCount.h"
#include "report/text_columns.h"
#include "run/shared_records.h"

namespace varnolix {

void writeMotifInput() {
    std::ofstream listing(outputPath + jobID + "input_motifs.txt");
    std::string text = bannerText();
    text += "\nTotal number of motifs: " + std::to_string(Datasets.size()) + "\n\nInput files and motif counts\n" +
            fileTable(FileNameType, "File name", "Count of motifs", longestFileName(FileNameType)) +
            "\nInput Motifs\n\n\n";
    for (const data& motif : Datasets) {
        text += "Dataset #: " + std::to_string(motif.datasetNum) + "\tMotif ID: " + std::to_string(motif.matrixID) +
                "\tMotif name: " + motif.motifName + "\n\n";
        for (const Column& column : motif.matrix) {
            for (const double value : column) {
                appendFixed(text, value);
                text += '\t';
            }
            text += '\n';
        }
        text += "\n\n";
        flushWhenLarge(listing, text);
    }
    listing << text;
}

}  // namespace varnolix
