#include "database/stages.h"

#include "database/collection_reading.h"

namespace varnolix {

void readUniprobeDatabase() {
    readCollection(readUniprobeDBMatrix);
}

}  // namespace varnolix
