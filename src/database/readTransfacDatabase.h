#pragma once

namespace varnolix {

/// Reads the chosen Transfac collection from the folder "databases" below the working directory.
/// Fills: DatabaseDatasets. Ends the process if the file cannot be opened.
void readTransfacDatabase();

}  // namespace varnolix
