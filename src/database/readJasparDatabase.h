#pragma once

namespace varnolix {

/// Reads the chosen Jaspar collection from the folder "databases" below the working directory.
/// Fills: DatabaseDatasets. Ends the process if the file cannot be opened.
void readJasparDatabase();

}  // namespace varnolix
