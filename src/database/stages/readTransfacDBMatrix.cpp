#include "database/stages.h"

#include "database/collection_reading.h"

namespace varnolix {

void readTransfacDBMatrix(const Block& rows) {
    DatabaseDatasets = motifsOfTransfacEntries(rows);
}

}  // namespace varnolix
