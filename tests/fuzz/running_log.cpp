// Scratch folder, start and stop.

#include "tests/fuzz/running_log.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "eventlog/store_state.h"
#include "tests/fuzz/process_exit.h"
#include "zuSaHpi_mainlib.h"

// Not made: it waits for all that anybody on this machine has written.
extern "C" void __wrap_sync();
void __wrap_sync() {
}

namespace fuzz {
namespace {

using zusahpi::eventlog::store;

constexpr mode_t folderMode = 0700;
constexpr mode_t fileMode = 0600;

struct Scratch {
    char root[64];
    char folder[80];
    char log[96];
    char lock[112];
    char salvage[112];
};

void removeScratch();

// In memory where that is possible: a Linked log waits for every write to reach the disk.
[[nodiscard]] const char *scratchPlace() {
    static constexpr char inMemory[] = "/dev/shm";
    const char *const asked = std::getenv("TMPDIR");
    if (asked != nullptr) {
        return asked;
    }
    return access(inMemory, W_OK) == 0 ? inMemory : "/tmp";
}

[[nodiscard]] Scratch makeScratch() {
    Scratch scratch{};
    const int length =
        std::snprintf(scratch.root, sizeof scratch.root, "%s/zufuzz.XXXXXX", scratchPlace());
    require(length > 0 && static_cast<std::size_t>(length) < sizeof scratch.root,
            "the scratch folder's name is short");
    require(mkdtemp(scratch.root) != nullptr, "there is a scratch folder");
    std::snprintf(scratch.folder, sizeof scratch.folder, "%s/evtlog", scratch.root);
    std::snprintf(scratch.log, sizeof scratch.log, "%s/log", scratch.folder);
    std::snprintf(scratch.lock, sizeof scratch.lock, "%s.lck", scratch.log);
    std::snprintf(scratch.salvage, sizeof scratch.salvage, "%s.new", scratch.log);
    require(mkdir(scratch.folder, folderMode) == 0, "there is a log folder");
    (void)std::atexit(removeScratch); // else it stays, and whoever called removes it
    return scratch;
}

Scratch scratchMade; // all zero until it is asked for

const Scratch &scratchFolder() {
    if (scratchMade.root[0] == '\0') {
        scratchMade = makeScratch();
    }
    return scratchMade;
}

// A failure leaves a few small files behind.
void removeScratch() {
    const Scratch &scratch = scratchFolder();
    (void)unlink(scratch.log);
    (void)unlink(scratch.lock);
    (void)unlink(scratch.salvage);
    (void)rmdir(scratch.folder);
    (void)rmdir(scratch.root);
}

} // namespace

EventLogControlBlock controlBlock(std::uint32_t type, std::uint32_t overflowAction,
                                  std::uint32_t size) {
    EventLogControlBlock block;
    std::memset(&block, 0, sizeof block);
    block.size = ZUSAHPI_EL_CONTROL_BLOCK_SIZE;
    block.magic = ZUSAHPI_EL_CONTROL_BLOCK_MAGIC;
    block.info.sa.Size = size;
    block.info.sa.UserEventMaxSize = SAHPI_MAX_TEXT_BUFFER_LENGTH;
    block.info.sa.Enabled = SAHPI_TRUE;
    block.info.sa.OverflowResetable = SAHPI_TRUE;
    block.info.type = type;
    block.info.overflowAction = overflowAction;
    block.info.oldest = ZUSAHPI_EL_NO_ENTRY;
    block.info.newest = ZUSAHPI_EL_NO_ENTRY;
    block.info.freeHead = ZUSAHPI_EL_NO_ENTRY;
    std::memcpy(block.fileName, "log", sizeof "log");
    block.fileEnabled = 1;
    block.syslogEnabled = 1;
    return block;
}

EventLogControlBlock controlBlock(std::uint8_t choice, std::uint32_t size) {
    return controlBlock(choice % logTypes, choice / logTypes % overflowActions, size);
}

void putLogFile(Bytes contents) {
    const int fd = open(scratchFolder().log, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, fileMode);
    require(fd >= 0, "the log file can be made");
    require(write(fd, contents.data(), contents.size()) == static_cast<ssize_t>(contents.size()),
            "the log file can be written");
    close(fd);
}

const char *logPath() {
    return scratchFolder().log;
}

const char *salvagePath() {
    return scratchFolder().salvage;
}

void removeSalvage() {
    require(unlink(scratchFolder().salvage) == 0, "the other log can be removed");
}

std::int64_t logFileSize() {
    struct stat status {};
    return stat(scratchFolder().log, &status) == 0 ? status.st_size : -1;
}

std::size_t readLogFile(void *bytes, std::size_t size) {
    const int fd = open(scratchFolder().log, O_RDONLY | O_CLOEXEC);
    require(fd >= 0, "the log file can be opened");
    const ssize_t count = read(fd, bytes, size);
    require(count >= 0, "the log file can be read");
    close(fd);
    return static_cast<std::size_t>(count);
}

bool startLog(const EventLogControlBlock &block) {
    zuSaHpiRoot = scratchFolder().root;
    EventLogControlBlock copy = block;
    if (!returns([&copy] { (void)zuSaHpiEventLogInit(&copy); })) {
        require(exitState.status == EXIT_FAILURE, "a refusal ends with status 1");
        stopLog();
        (void)unlink(scratchFolder().lock); // stays after a refusal before the file was open
        return false;
    }
    return true;
}

void stopLog() {
    runExitHandler();
    store = {};
}

void discardLog() {
    stopLog();
    require(unlink(scratchFolder().log) == 0 || errno == ENOENT, "the log file can be removed");
    require(unlink(scratchFolder().lock) != 0 && errno == ENOENT, "the lock is gone");
}

void requireIdle() {
    require(store.initialised, "the log runs");
    require(store.transaction == nullptr, "no transaction is open");
    require(zusahpi::eventlog::slotIsEmpty(store.transactionCache[0]),
            "the transaction cache is empty");
}

} // namespace fuzz
