#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "job/command_line.h"
#include "job/job_error.h"
#include "run/system/output_file.h"
#include "run/system/run_limits.h"

int main(int argc, char** argv) {
    varnolix::letFileSizeLimitFailWrites();
    varnolix::endWhereMemoryEnds();
    try {
        return varnolix::job::runCommandLine(argc, argv);
    } catch (const varnolix::job::JobError& error) {
        std::cerr << "varnolix-job: " << error.what() << '\n';
        return EXIT_FAILURE;
    } catch (const std::filesystem::filesystem_error& error) {
        std::cerr << "varnolix-job: " << error.path1().string() << ": " << error.code().message() << '\n';
        return EXIT_FAILURE;
    }
}
