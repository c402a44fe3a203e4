#include "run/system/parallel_pieces.h"

#include <omp.h>

#include <atomic>
#include <filesystem>

#include "run/system/outside_tool.h"

// Tested by parallel_pieces_test.cpp.

namespace varnolix {

int callsAtOnce(const std::string& promise) {
    std::error_code missing;
    return std::filesystem::is_regular_file(promise, missing) ? omp_get_max_threads() : 1;
}

std::optional<OutputTrouble> doPieces(std::size_t count, int atOnce,
                                      const std::function<std::optional<OutputTrouble>(std::size_t)>& doPiece) {
    std::atomic<std::size_t> troubled = count;  // the earliest piece with trouble
    std::optional<OutputTrouble> earliest;
#pragma omp parallel for schedule(monotonic : dynamic) num_threads(atOnce)
    for (std::size_t piece = 0; piece < count; ++piece) {
        // Earlier pieces go on: they may meet trouble too, though no tool starts any more.
        if (piece > troubled) continue;
        const std::optional<OutputTrouble> trouble = doPiece(piece);
        if (!trouble) continue;
        ToolWork::giveUpAll();
#pragma omp critical(trouble)
        if (piece < troubled) {
            troubled = piece;
            earliest = trouble;
        }
    }
    return earliest;
}

}  // namespace varnolix
