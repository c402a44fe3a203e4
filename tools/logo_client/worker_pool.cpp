#include "logo_client/worker_pool.h"

#include <fcntl.h>
#include <sched.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>

#include "logo_client/files.h"
#include "logo_client/tool_state.h"
#include "logo_client/weblogo_call.h"

namespace varnolix::logos {

namespace {

constexpr std::size_t longestMatrix = 65536;  // bytes; a longer one would block the worker for too long
constexpr int startSeconds = 30;              // for a new worker to report that it is listening
constexpr int queueSeconds = 120;             // for a slot to become free
constexpr std::uint64_t answerSeconds = 10;   // for each step of an exchange with a worker
constexpr const char* idleSeconds = "20";
constexpr const char* python = "/usr/bin/python3";
// A worker first creates its socket with its process number appended to the name.
constexpr std::size_t longestAddress = sizeof(sockaddr_un::sun_path) - sizeof(".4194304");

/// The worker's source, in the folder of this program. Empty if that cannot be determined.
std::string workerSource() {
    std::array<char, PATH_MAX> name{};
    const ssize_t length = readlink("/proc/self/exe", name.data(), name.size());
    if (length <= 0) return "";
    const std::string self(name.data(), static_cast<std::size_t>(length));
    return self.substr(0, self.rfind('/') + 1) + "weblogo_worker.py";
}

/// The user's runtime folder, or else one that we create. Empty if neither is possible.
std::string privateFolder() {
    std::string runtime = setting("XDG_RUNTIME_DIR");
    if (isPrivateFolder(runtime)) return runtime;
    const std::string folder = setting("TMPDIR", "/tmp") + "/varnolix-" + std::to_string(getuid());
    mkdir(folder.c_str(), S_IRWXU);
    return isPrivateFolder(folder) ? folder : "";
}

unsigned slotCount() {
    cpu_set_t cores;
    const unsigned count =
        sched_getaffinity(0, sizeof cores, &cores) == 0 ? static_cast<unsigned>(CPU_COUNT(&cores)) : 1;
    return static_cast<unsigned>(std::max<std::uint64_t>(1, numberSetting("VARNOLIX_LOGO_WORKERS", count)));
}

/// The paths that a set of workers uses.
struct Pool {
    std::string worker;  ///< the worker's source
    std::string stem;    ///< first part of the paths of all locks and sockets

    std::string lock(unsigned slot) const { return stem + std::to_string(slot) + ".lock"; }
    std::string address(unsigned slot) const { return stem + std::to_string(slot) + ".socket"; }
};

/// A slot that belongs to us as long as the lock is open.
struct Slot {
    unsigned number;
    Descriptor lock;
};

/// Locks a file, which is created if necessary. Waits for the lock only if `isPatient`.
Descriptor lockedFile(const std::string& path, bool isPatient) {
    while (true) {
        Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
        if (!file.isOpen() || flock(file.number(), isPatient ? LOCK_EX : LOCK_EX | LOCK_NB) != 0) return Descriptor();
        // The previous owner may have removed the file in the meantime. Then our lock is worthless, so try again.
        struct stat ours {
        }, there{};
        if (fstat(file.number(), &ours) == 0 && stat(path.c_str(), &there) == 0 && isSameFile(ours, there)) return file;
    }
}

/// Lets a signal interrupt a system call after so many seconds. 0 cancels that.
void interruptIn(int seconds) {
    struct sigaction action {};
    action.sa_handler = [](int) {};  // without SA_RESTART, so that calls do end
    sigaction(SIGALRM, &action, nullptr);
    alarm(static_cast<unsigned>(seconds));
}

/// Takes a free slot, or else waits for one of them. Nothing if it does not become free in time.
std::optional<Slot> takeSlot(const Pool& pool) {
    const unsigned count = slotCount();
    for (unsigned slot = 0; slot < count; ++slot)
        if (Descriptor lock = lockedFile(pool.lock(slot), false); lock.isOpen()) return Slot{slot, std::move(lock)};
    const unsigned slot = static_cast<unsigned>(getpid()) % count;
    interruptIn(queueSeconds);
    Descriptor lock = lockedFile(pool.lock(slot), true);
    interruptIn(0);
    if (!lock.isOpen()) return std::nullopt;
    return Slot{slot, std::move(lock)};
}

void limitSteps(int socket, std::uint64_t seconds) {
    struct timeval limit {};
    limit.tv_sec = static_cast<time_t>(seconds);
    setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
}

/// Starts a worker and waits until it listens. Returns whether it does.
bool startWorker(const std::string& worker, const std::string& address) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return false;
    const Descriptor ours(ends[0]);
    Descriptor its(ends[1]);
    fcntl(its.number(), F_SETFD, 0);
    const std::vector<std::string> words = {
        python, "-I", worker, address, setting("VARNOLIX_LOGO_IDLE", idleSeconds), std::to_string(its.number())};
    pid_t process = 0;
    if (posix_spawn(&process, python, nullptr, nullptr, pointersTo(words).data(),
                    pointersTo(drawingEnvironment()).data()) != 0)
        return false;
    its.close();
    limitSteps(ours.number(), startSeconds);
    char word = 0;
    return recv(ours.number(), &word, 1, 0) == 1 && word == '!';
}

/// A connection to the worker at this address; not open if none is listening.
Descriptor connectedTo(const std::string& address) {
    Descriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    limitSteps(connection.number(), numberSetting("VARNOLIX_LOGO_ANSWER", answerSeconds));
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    std::memcpy(static_cast<char*>(place.sun_path), address.c_str(), address.size() + 1);
    if (connect(connection.number(), reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0) return Descriptor();
    return connection;
}

bool sendAll(int connection, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = send(connection, content.data(), content.size(), MSG_NOSIGNAL);
        if (count >= 0) {
            content.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return shutdown(connection, SHUT_WR) == 0;
}

/// Sends the request and returns the answer. Nothing if either step fails or takes too long.
std::optional<std::string> exchange(int connection, std::string_view request) {
    if (!sendAll(connection, request)) return std::nullopt;
    return readAll(connection);
}

/// The picture in an answer. The answer begins with its length, so that an incomplete picture is recognised.
std::optional<std::string> pictureOf(const std::string& answer) {
    const std::size_t end = answer.find('\n');
    if (end == std::string::npos) return std::nullopt;
    std::string picture = answer.substr(end + 1);
    if (answer.substr(0, end) != std::to_string(picture.size())) return std::nullopt;
    return picture;
}

/// Kills a worker that no longer answers, so that there are never more workers than slots.
void endWorker(int connection, const std::string& address) {
    ucred worker{};
    socklen_t size = sizeof worker;
    if (getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &worker, &size) == 0 && worker.pid > 0)
        kill(worker.pid, SIGKILL);
    unlink(address.c_str());
}

/// The answer of the slot's worker, which is started if necessary. Nothing if there is no answer.
std::optional<std::string> answerOf(const Pool& pool, const Slot& slot, std::string_view request) {
    const std::string address = pool.address(slot.number);
    Descriptor connection = connectedTo(address);
    if (!connection.isOpen()) {
        if (startWorker(pool.worker, address)) connection = connectedTo(address);
        if (!connection.isOpen()) {
            unlink(pool.lock(slot.number).c_str());  // no worker is there to do it
            return std::nullopt;
        }
    }
    std::optional<std::string> answer = exchange(connection.number(), request);
    if (!answer && errno == EAGAIN) endWorker(connection.number(), address);
    return answer;
}

}  // namespace

std::optional<std::string> drawnByWorker(const std::string& tools, const std::vector<std::string>& options,
                                         std::string_view matrix) {
    if (setting("VARNOLIX_LOGO_WORKER") == "no" || matrix.size() > longestMatrix) return std::nullopt;
    const std::string worker = workerSource();
    const std::string folder = privateFolder();
    // The workers have loaded certain versions of the tools, so every state of tools and source gets its own set.
    const std::string state = toolState({{worker}, {}});
    if (state.empty() || folder.empty()) return std::nullopt;
    const Pool pool{worker, folder + "/varnolix-logo-" + hexadecimal(contentHash(state + tools)) + "-"};
    if (pool.address(slotCount()).size() > longestAddress) return std::nullopt;
    const std::optional<Slot> slot = takeSlot(pool);
    if (!slot) return std::nullopt;
    std::string request;
    for (const std::string& option : options) request += (request.empty() ? "" : std::string(1, '\0')) + option;
    request += std::string(2, '\0');
    request += matrix;
    const std::optional<std::string> answer = answerOf(pool, *slot, request);
    return answer ? pictureOf(*answer) : std::nullopt;
}

}  // namespace varnolix::logos
