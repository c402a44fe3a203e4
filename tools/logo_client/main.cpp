// Draws one sequence logo: WebLogo with a shorter way to it.
//
// The program calls this client once for every logo, with one of two option lists, the matrix on standard input and the
// picture taken from standard output. A picture that was drawn before comes out of the store. Another one is drawn by a
// worker that has WebLogo and ghostscript loaded. Whatever a worker cannot answer with a picture goes the plain way,
// through WebLogo's own command; error texts and exit statuses are therefore always those of that command.
//
// A call is over in a millisecond if its picture is kept, so everything here is sparing: no streams, no locale, no
// shared library. tools/README.md lists the environment variables.

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

/// Gives the picture to the caller; the exit status.
int deliver(const std::string& picture) {
    if (writeAll(STDOUT_FILENO, picture)) return 0;
    std::perror("weblogo: cannot write the picture");
    return 1;
}

/// One call of the program.
int drawLogo(const std::vector<std::string>& options, const std::string& matrix) {
    const ToolFiles files = installedTools();
    const std::string tools = toolState(files);
    // Where the tools are not known, it is not known either whether a kept picture is theirs.
    const std::optional<PictureStore> store = tools.empty() ? std::nullopt : openStore();
    const std::string key = pictureKey(tools, drawingEnvironment(), options, matrix);
    if (store)
        if (const std::optional<std::string> picture = storedPicture(*store, key)) return deliver(*picture);
    const std::optional<std::string> picture = drawnByWorker(tools, options, matrix);
    if (!picture) return runWeblogo(options, matrix);
    const int status = deliver(*picture);
    // Tools that were replaced meanwhile may have drawn it, the new as well as the old ones.
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
