#include "run/output_names.h"

#include <cstdlib>
#include <ctime>

#include "run/run_text.h"
#include "run/shared_records.h"

namespace varnolix {

namespace {

constexpr std::size_t inputFolderLength = 7;

struct OutputName {
    std::string& name;
    std::string& location;
};

}  // namespace

std::string resultFolder(const std::string& inputFolder) {
    const bool shortens = inputFolder.size() >= inputFolderLength;
    return inputFolder.substr(0, shortens ? inputFolder.size() - inputFolderLength : inputFolder.size()) + "result/";
}

int jobNumber(int random) {
    return random % 9000 + 1000;
}

std::string makeJobID() {
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    const std::string now = getCurrDateTimeFormat();
    return "J_" + now.substr(0, now.find('_')) + "_" + numberToString(jobNumber(std::rand())) + "_";
}

void nameOutputFiles() {
    const OutputName names[] = {
        {outputFile, outputFileLocation},
        {outputFileWithoutMotif, outputFileWithoutMotifLocation},
        {outputGlobalMatchingFile, outputFileGlobalMatchingLocation},
        {outputHTMLFile, outputHTMLFileLocation},
        {outputHTMLGlobalMatchingFile, outputHTMLGlobalMatchingFileLocation},
        {outputDatabaseMatchingFile, outputDatabaseMatchingFileLocation},
        {outputDatabaseMatchingFileWithoutMotif, outputDatabaseMatchingFileWithoutMotifLocation},
        {outputDatabaseMatchingHTMLFile, outputDatabaseMatchingHTMLFileLocation},
        {outputDatabaseMatchingGlobalMatchingFile, outputDatabaseMatchingGlobalMatchingFileLocation},
        {outputDatabaseMatchingGlobalMatchingHTMLFile, outputDatabaseMatchingGlobalMatchingHTMLFileLocation},
        {outputCombinedMatrixGlobalFile, outputCombinedMatrixGlobalFileLocation},
        {outputCombinedMatrixGlobalAndLocalFile, outputCombinedMatrixGlobalAndLocalFileLocation},
        {outputCombinedMatrixBestMatchesFile, outputCombinedMatrixBestMatchesFileLocation},
        {outputPhylogeneticTreeHTMLFile, outputPhylogeneticTreeHTMLFileLocation},
        {outputPhylogeneticTreeGlobalHTMLFile, outputPhylogeneticTreeGlobalHTMLFileLocation},
    };
    for (const OutputName& output : names) {
        output.name.insert(0, jobID);
        output.location = outputPath + output.name;
    }
}

void identifyJob() {
    jobID = makeJobID();
    // The folder that the user named is not used: results always go next to the input folder.
    outputPath = resultFolder(inputPath);
    nameOutputFiles();
}

}  // namespace varnolix
