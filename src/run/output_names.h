#pragma once

#include <string>

namespace varnolix {

/// The result folder: the input path without its last seven characters (a folder name of six and its slash), then
/// "result/". A path shorter than seven characters stays whole.
std::string resultFolder(const std::string& inputFolder);

/// The number of a job, from 1000 to 9999, of a random number that is not negative.
int jobNumber(int random);

/// "J_", the date (year-month-day), "_", a number from 1000 to 9999, "_".
std::string makeJobID();

/// Puts jobID in front of every output name and outputPath in front of that for its location.
void nameOutputFiles();

}  // namespace varnolix
