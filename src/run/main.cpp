#include "run/runDialogue.h"
#include "run/runJob.h"
#include "run/system/output_file.h"
#include "run/system/run_limits.h"

int main() {
    varnolix::letFileSizeLimitFailWrites();
    varnolix::endWhereMemoryEnds();
    varnolix::runDialogue();
    varnolix::runJob();
    return 0;
}
