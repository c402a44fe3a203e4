#include "input/stages.h"

#include <cerrno>
#include <cstring>

#include "report/text/file_table.h"
#include "report/text/text_columns.h"
#include "run/shared_records.h"
#include "run/system/output_file.h"

namespace varnolix {

void writeMotifInput() {
    const std::string path = outputPath + jobID + "input_motifs.txt";
    std::ofstream listing;
    if (!tryOpenOutput(listing, path)) {
        sayNotWritten(path, std::strerror(errno));
        return;
    }
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
    closeOutput(listing, path);
}

}  // namespace varnolix
