#include "report/page/motif_logos.h"

#include <sys/stat.h>

#include <cstdio>
#include <fstream>

#include "report/page/logo_names.h"
#include "run/run_text.h"
#include "run/system/output_file.h"
#include "run/system/outside_text.h"
#include "run/system/outside_tool.h"

namespace varnolix {

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

void drawLogos(const Matrix& matrix, char letter, long id) {
    const std::string folder = outputPath + logoFolderName();
    mkdir(folder.c_str(), 0777);
    refuseLink(folder);
    const std::string matrixFile = folder + "/" + logoStem(letter, id) + ".txt";
    ToolWork work({matrixFile});
    std::ofstream stream;
    openOutput(stream, matrixFile);
    stream << logoMatrixText(matrix);
    closeOutput(stream, matrixFile);
    for (const LogoStrand strand : {LogoStrand::original, LogoStrand::reverseComplement}) {
        const std::string logoFile = folder + "/" + logoName(letter, id, strand);
        refuseLink(logoFile);
        work.run(logoCommand(matrixFile, logoFile, strand == LogoStrand::reverseComplement), logoFile);
    }
    std::remove(matrixFile.c_str());
}

}  // namespace varnolix
