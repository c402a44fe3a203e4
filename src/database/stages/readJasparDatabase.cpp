#include "database/stages.h"

#include "database/collection_reading.h"

namespace varnolix {

void readJasparDatabase() {
    readCollection(readJasparDBMatrix);
}

}  // namespace varnolix
