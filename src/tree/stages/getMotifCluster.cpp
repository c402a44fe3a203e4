#include "tree/stages.h"

#include "tree/tree_plot.h"

namespace varnolix {

void getMotifCluster() {
    drawTree(distanceMatrix, listTree);
}

}  // namespace varnolix
