#include "job/version/version_text.h"

#include "job/folder/installation.h"
#include "job/help_format.h"
#include "job/job_error.h"
#include "job/version/outside_versions.h"
#include "scan/kernel/pair_kernel.h"

namespace varnolix::job {

namespace {

constexpr int secondsToAnswer = 10;

#ifdef __clang__
constexpr const char* compiler = "clang " __clang_version__;
#else
constexpr const char* compiler = "g++ " __VERSION__;
#endif

const char* nameOf(KernelCode code) {
    switch (code) {
        case KernelCode::avx512:
            return "AVX-512";
        case KernelCode::avx2:
            return "AVX2";
        case KernelCode::portable:
            break;
    }
    return "portable";
}

std::string toolLines() {
    try {
        const Installation installation = findInstallation();
        prepareToolEnvironment(installation);
        std::string text = "Outside tools, as jobs find them:\n";
        const std::vector<ToolQuestion> questions = toolQuestions(installation);
        const std::vector<std::string> versions = askTools(questions, secondsToAnswer);
        for (std::size_t place = 0; place < questions.size(); ++place) {
            text += helpEntry(questions[place].name, versions[place].empty() ? "not found" : versions[place]);
        }
        return text;
    } catch (const JobError& error) {
        return std::string("No outside tools, as ") + error.what() + "\n";
    }
}

}  // namespace

std::string programLines() {
    return "varnolix-job " VARNOLIX_FULL_VERSION "\n" + helpEntry("commit", sourceCommit()) +
           helpEntry("compiler", compiler) + helpEntry("kernel", nameOf(fastestKernelCode()));
}

std::string versionText() {
    std::string text = programLines() + toolLines();
    text.pop_back();  // what prints it ends the line
    return text;
}

}  // namespace varnolix::job
