#include "database/readUniprobeDBMatrix.h"

#include "database/collection_reading.h"
#include "database/collections.h"

namespace varnolix {

void readUniprobeDBMatrix(const Block& rows) {
    DatabaseDatasets = motifsOfBaseRows(rows, findCollection(DBName)->taxon);
}

}  // namespace varnolix
