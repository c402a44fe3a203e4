#include "report/page/motif_logos.h"

#include <sys/stat.h>

#include <cstdio>
#include <unordered_set>

#include "report/page/logo_names.h"
#include "run/run_text.h"
#include "run/system/outside_text.h"
#include "run/system/outside_tool.h"
#include "run/system/parallel_pieces.h"
#include "run/system/progress.h"

namespace varnolix {

namespace {

/// Whether no two motifs have files of the same names.
bool haveNumbersOfTheirOwn(std::span<const data> motifs) {
    std::unordered_set<long> numbers;
    for (const data& motif : motifs) numbers.insert(motif.matrixID);
    return numbers.size() == motifs.size();
}

}  // namespace

std::string logoMatrixText(const Matrix& matrix) {
    std::string text = "PO A C G T \n";
    int number = 0;
    for (const Column& column : matrix) {
        text += std::to_string(++number) + " ";
        for (const double value : column) text += numberToString(value) + " ";
        text += "\n";
    }
    return text;
}

std::string logoCommand(const std::string& matrixFile, const std::string& logoFile, bool isReverse) {
    return shellWord(inputPath + "weblogo-3.4/weblogo") +
           " --format jpeg --sequence-type dna --units bits --composition none --first-index 1" +
           (isReverse ? " --revcomp" : "") +
           " --size medium --stacks-per-line 80 --show-xaxis YES --show-yaxis YES --ticmarks 1.0 --errorbars NO"
           " --stack-width 20 --resolution 96 --scale-width yes --color-scheme classic --color green A 'Adenine'"
           " --color blue C 'Cytosine' --color orange G 'Guanine' --color red T 'Thymine' < " +
           shellWord(matrixFile) + " > " + shellWord(logoFile);
}

std::optional<OutputTrouble> drawLogos(const Matrix& matrix, char letter, long id) {
    const std::string folder = outputPath + logoFolderName();
    mkdir(folder.c_str(), 0777);
    if (auto trouble = linkTrouble(folder)) return trouble;
    const std::string matrixFile = folder + "/" + logoStem(letter, id) + ".txt";
    ToolWork work({matrixFile});
    auto trouble = writeOutput(matrixFile, logoMatrixText(matrix));
    for (const LogoStrand strand : {LogoStrand::original, LogoStrand::reverseComplement}) {
        const std::string logoFile = folder + "/" + logoName(letter, id, strand);
        if (!trouble) trouble = linkTrouble(logoFile);
        if (trouble) break;
        work.run(logoCommand(matrixFile, logoFile, strand == LogoStrand::reverseComplement), logoFile);
    }
    std::remove(matrixFile.c_str());
    return trouble;
}

void drawAllLogos(std::span<const data> motifs,
                  std::optional<OutputTrouble> (*drawBoth)(const Matrix& matrix, long id)) {
    Progress progress("logos", 2 * motifs.size(), Progress::Time::estimated);
    const auto drawOne = [&](std::size_t k) {
        auto trouble = drawBoth(motifs[k].matrix, motifs[k].matrixID);
        progress.add(2);
        return trouble;
    };
    const int atOnce = haveNumbersOfTheirOwn(motifs) ? callsAtOnce(inputPath + "weblogo-3.4/calls-may-overlap") : 1;
    const auto trouble = doPieces(motifs.size(), atOnce, drawOne);
    progress.clear();
    endOnTrouble(trouble);
}

}  // namespace varnolix
