#pragma once

#include <string>

namespace varnolix {

/// The result folder: the input path without its last seven characters (a folder name of six characters and its slash),
/// followed by "result/". A path of fewer than seven characters is kept whole.
std::string resultFolder(const std::string& inputFolder);

/// Turns a random number, which must not be negative, into the number of a job: 1000 to 9999.
int jobNumber(int random);

/// Makes up the identity of a job: "J_", the date (year-month-day), "_", a number from 1000 to 9999, "_".
std::string makeJobID();

/// Puts jobID in front of every output name, and sets its location to outputPath followed by that name.
void nameOutputFiles();

/// Gives the job its identity, its result folder and its output names. The input folder must be known.
void identifyJob();

}  // namespace varnolix
