// Draws one sequence logo: a faster front end to WebLogo.
//
// The program calls this client once for every logo, with one of two option lists. The matrix comes in on standard
// input, and the picture goes out on standard output. A picture that was drawn before is taken from the store. Any
// other one is drawn by a worker that has WebLogo and ghostscript already loaded. If the worker cannot produce a
// picture, the client runs WebLogo's own command instead, so error texts and exit statuses are always those of that
// command.
//
// A call whose picture is stored takes a millisecond, and anything slow to start would show. That is why there are no
// streams, no locale and no shared libraries here. tools/README.md lists the environment variables.

#include <unistd.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "logo_client/files.h"
#include "logo_client/picture_store.h"
#include "logo_client/tool_state.h"
#include "logo_client/weblogo_call.h"
#include "logo_client/worker_pool.h"

namespace varnolix::logos {

namespace {

constexpr int headerAloneStatus = 2;

/// Writes the picture to standard output. Returns the exit status.
int deliver(const std::string& picture) {
    if (writeAll(STDOUT_FILENO, picture)) return 0;
    std::perror("weblogo: cannot write the picture");
    return 1;
}

/// One call of the program.
int drawLogo(const std::vector<std::string>& options, const std::string& matrix) {
    const ToolFiles files = installedTools();
    const std::string tools = toolState(files);
    // If the state of the tools is unknown, nobody can tell whether a stored picture is still right.
    const std::optional<PictureStore> store = tools.empty() ? std::nullopt : openStore();
    const std::string key = pictureKey(tools, drawingEnvironment(), options, matrix);
    if (store)
        if (const std::optional<std::string> picture = storedPicture(*store, key)) return deliver(*picture);
    const std::optional<std::string> picture = drawnByWorker(tools, options, matrix);
    if (!picture) return runWeblogo(options, matrix);
    const int status = deliver(*picture);
    // If the tools were replaced in the meantime, the old or the new ones may have drawn it. Then it is not stored.
    if (store && toolState(files) == tools) keepPicture(*store, key, *picture);
    return status;
}

}  // namespace

}  // namespace varnolix::logos

int main(int count, char** words) {
    using namespace varnolix::logos;
    const std::vector<std::string> options(words + 1, words + count);
    if (!isProgramCall(options)) return runWeblogo(options);
    const std::optional<std::string> matrix = readAll(STDIN_FILENO);
    if (!matrix) {
        std::perror("weblogo: cannot read the matrix");
        return 1;
    }
    if (isHeaderAlone(*matrix)) {
        std::fputs("Error: the matrix has a header and no rows\n", stderr);
        return headerAloneStatus;
    }
    return drawLogo(options, *matrix);
}
