#include "database/readJasparDatabase.h"

#include "database/collection_reading.h"
#include "database/readJasparDBMatrix.h"

namespace varnolix {

void readJasparDatabase() {
    readCollection(readJasparDBMatrix);
}

}  // namespace varnolix
