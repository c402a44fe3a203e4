#include "run/settings.h"

#include "run/shared_records.h"

namespace varnolix {

bool writesText() {
    return outputFileFormat == "Text" || outputFileFormat == "All";
}

bool writesPages() {
    return outputFileFormat != "Text";
}

bool writesPDF() {
    return outputFileFormat == "PDF" || outputFileFormat == "All";
}

bool isTypeAll() {
    return outputFileType == "All";
}

bool isLocalTreeDrawn() {
    return motifCluster == "Y" && isTypeAll();
}

bool isGlobalTreeDrawn() {
    return motifCluster == "Y" && numFile > 1;
}

}  // namespace varnolix
