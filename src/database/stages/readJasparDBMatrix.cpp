#include "database/stages.h"

#include "database/collection_reading.h"
#include "run/collections.h"

namespace varnolix {

void readJasparDBMatrix(const Block& rows) {
    DatabaseDatasets = motifsOfBaseRows(rows, findCollection(DBName)->taxon);
}

}  // namespace varnolix
