#include "database/readUniprobeDatabase.h"

#include "database/collection_reading.h"
#include "database/readUniprobeDBMatrix.h"

namespace varnolix {

void readUniprobeDatabase() {
    readCollection(readUniprobeDBMatrix);
}

}  // namespace varnolix
