#include "tree/stages.h"

#include "tree/tree_plot.h"

namespace varnolix {

void getMotifClusterGlobal() {
    drawTree(distanceMatrixGlobal, globalTree);
}

}  // namespace varnolix
