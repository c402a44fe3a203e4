#include "database/stages.h"

#include "database/collection_reading.h"

namespace varnolix {

void readTransfacDatabase() {
    readCollection(readTransfacDBMatrix);
}

}  // namespace varnolix
