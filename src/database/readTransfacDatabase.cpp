#include "database/readTransfacDatabase.h"

#include "database/collection_reading.h"
#include "database/readTransfacDBMatrix.h"

namespace varnolix {

void readTransfacDatabase() {
    readCollection(readTransfacDBMatrix);
}

}  // namespace varnolix
