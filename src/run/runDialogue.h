#pragma once

namespace varnolix {

/// Asks every question on the console, each until it gets a valid answer. Then derives the job's identity, the result
/// folder and the names of all output files.
/// Fills: the answers, FileNameType, jobID, outputPath, the output names and locations.
void runDialogue();

}  // namespace varnolix
