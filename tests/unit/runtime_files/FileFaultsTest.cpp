// Every system call of reading and saving fails once, at every place where it is made.

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <memory>

#include "tests/unit/runtime_files/FaultyCalls.h"
#include "tests/unit/runtime_files/Folder.h"

namespace zorvane {
namespace {

using modZorvane::ReadFileWords;
using modZorvane::WriteFileWords;

// Longer than one piece of the tail, so that copying it takes several calls.
const std::string kOld = std::string(4, '\xff') + std::string(80'001, 'o');
const std::string kWords = std::string(4, '\xff') + std::string(9'996, 'n');
const std::string kNew = kWords + kOld.substr(kWords.size());

enum class After { Old, New };

TEST(WriteFileWords, EachFailureOfTheSystemLeavesOldOrNewAsStated) {
    const struct {
        const char* what;
        Fault fault;
        After expected;
        bool inPlace = false;  // the file that was there has been written
    } cases[] = {
        {"directory cannot be opened", {Call::Openat, 1, EMFILE, true}, After::Old},
        {"file cannot be opened for writing", {Call::Openat, 2, EACCES}, After::Old},
        {"too many files when the new one is to be made",
         {Call::Openat, 4, EMFILE, true},
         After::Old},
        {"files without a name are unknown here", {Call::Openat, 4, EOPNOTSUPP}, After::New},
        {"directory takes no new file", {Call::Openat, 4, EACCES, true}, After::New, true},
        {"owner cannot be looked up", {Call::Fstat, 1, EIO}, After::Old},
        {"mode cannot be kept", {Call::Fchmod, 1, EPERM, true}, After::New, true},
        {"no space can be reserved", {Call::Fallocate, 1, ENOSPC, true}, After::Old},
        {"space cannot be reserved on this file system",
         {Call::Fallocate, 1, EOPNOTSUPP, true},
         After::New},
        {"reserving is interrupted", {Call::Fallocate, 1, EINTR}, After::New},
        {"disk full in the words", {Call::Pwrite, 1, ENOSPC, true}, After::Old},
        {"disk full in the tail", {Call::Pwrite, 2, ENOSPC, true}, After::Old},
        {"writing is interrupted", {Call::Pwrite, 1, EINTR}, After::New},
        {"writing comes to half", {Call::Pwrite, 1, kShortCount}, After::New},
        {"writing comes to half, time and again", {Call::Pwrite, 1, kShortCount, true}, After::New},
        {"the old tail cannot be read", {Call::Pread, 2, EIO, true}, After::Old},
        {"reading the tail is interrupted", {Call::Pread, 2, EINTR}, After::New},
        {"the bytes do not reach the disk", {Call::Fsync, 1, EIO}, After::Old},
        {"syncing is interrupted", {Call::Fsync, 1, EINTR}, After::New},
        {"syncing is unknown here", {Call::Fsync, 1, EINVAL, true}, After::New},
        {"the directory does not reach the disk", {Call::Fsync, 2, EIO}, After::New},
        {"no lock to be had", {Call::Flock, 1, ENOLCK, true}, After::New},
        {"the new file gets no name", {Call::Linkat, 1, ENOENT}, After::New},
        {"the name is a mount point", {Call::Renameat, 1, EBUSY, true}, After::New, true},
        {"the directory is sticky", {Call::Renameat, 1, EPERM, true}, After::New, true},
        {"renaming fails on the disk", {Call::Renameat, 1, EIO}, After::Old},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Folder folder;
        folder.Put("file", kOld);
        const ino_t inode = folder.State("file").st_ino;
        {
            const Armed fault(c.fault);
            WriteFileWords(folder.At("file"), WordsOf(kWords));
            EXPECT_TRUE(fault.Hit());
        }
        EXPECT_TRUE(folder.Bytes("file") == (c.expected == After::New ? kNew : kOld));
        EXPECT_EQ(folder.State("file").st_ino == inode, c.inPlace || c.expected == After::Old);
        EXPECT_EQ(folder.Others({"file"}), std::vector<std::string>{});
    }
}

struct Way {
    const char* what;
    bool unnamed, linked, there;
};
constexpr Way kWays[] = {
    {"a new file without a name", true, false, true},
    {"a new file under a temporary name", false, false, true},
    {"in place", true, true, true},
    {"no file before", true, false, false},
};
constexpr int kErrors[] = {EIO, ENOSPC, EACCES, EPERM, EMFILE, ENOMEM, EINTR, kShortCount};

bool CanBeInterrupted(Call call) {
    return call == Call::Openat || call == Call::Pread || call == Call::Pwrite ||
           call == Call::Fallocate || call == Call::Fsync;
}

// One save with the fault; false when the fault was not reached.
bool Try(const Way& way, const Fault& fault) {
    SCOPED_TRACE(testing::Message()
                 << way.what << ": " << NameOf(fault.At) << " " << fault.Nth << " fails with "
                 << fault.Error << (fault.FromThenOn ? " from then on" : ""));
    // A disk in memory where there is one: real ones take their time for thousands of renamings.
    const bool memory = ::access("/dev/shm", W_OK | X_OK) == 0;
    const Folder folder(memory ? "/dev/shm" : std::filesystem::temp_directory_path());
    if (way.there) folder.Put("file", kOld);
    if (way.linked) std::filesystem::create_hard_link(folder.At("file"), folder.At("name"));
    const std::optional<std::string> old = folder.Bytes("file");
    const std::string& whole = way.there ? kNew : kWords;
    const Variant words = WordsOf(kWords);
    const Text path = folder.At("file");
    bool hit = false;
    {
        const auto named = way.unnamed ? nullptr : std::make_unique<NoUnnamedFiles>();
        const Armed armed(fault);
        WriteFileWords(path, words);
        hit = armed.Hit();
    }
    const std::optional<std::string> now = folder.Bytes("file");
    const bool unreadable = way.there && now && now->starts_with(std::string(4, '\0'));
    // Where the disk has died in the middle of writing in place, there is no stream any more.
    const bool lost = unreadable && fault.FromThenOn && way.there;
    EXPECT_TRUE(now == old || now == whole || lost) << "torn";
    const bool harmless = fault.Error == EINTR || fault.Error == kShortCount;
    if (harmless && CanBeInterrupted(fault.At)) {
        EXPECT_TRUE(now == whole) << "not saved";
    }
    EXPECT_EQ(folder.Others({"file", "name"}), std::vector<std::string>{});
    return hit;
}

TEST(WriteFileWords, AFailureAtAnyCallLeavesOldOrNewAndNothingBeside) {
    int trials = 0;
    for (const Way& way : kWays)
        for (int call = 0; call < kCalls; ++call)
            for (const int error : kErrors)
                for (const bool fromThenOn : {false, true}) {
                    // An interruption without end would be tried for ever.
                    if (fromThenOn && error != EIO && error != EACCES) continue;
                    Fault fault{static_cast<Call>(call), 1, error, fromThenOn};
                    while (Try(way, fault)) {
                        ++fault.Nth;
                        ++trials;
                    }
                }
    RecordProperty("trials", trials);
    EXPECT_GT(trials, 500);
}

TEST(ReadFileWords, AFailureAtAnyCallGivesEmptyOrTheWordsReadSoFar) {
    const Folder folder;
    folder.Put("file", kWords);
    const Text path = folder.At("file");
    const Variant whole = WordsOf(kWords);
    const Variant unread = WordsOf(std::string(kWords.size(), '\0'));
    const struct {
        const char* what;
        Fault fault;
        Variant expected;
    } cases[] = {
        {"too many files", {Call::Openat, 1, EMFILE}, {}},
        {"opening is interrupted", {Call::Openat, 1, EINTR}, whole},
        {"kind of file unknown", {Call::Fstat, 1, EIO}, {}},
        {"nothing can be read", {Call::Pread, 1, EIO}, unread},
        {"reading is interrupted", {Call::Pread, 1, EINTR}, whole},
        {"reading comes to half", {Call::Pread, 1, kShortCount}, whole},
        {"half is read", {Call::Pread, 2, EIO}, whole},
        {"no memory for the path", {Call::Allocate, 1, 1}, {}},
        {"no memory for the words", {Call::Allocate, 2, 1}, {}},
    };
    for (const auto& c : cases) {
        const Armed fault(c.fault);
        const Variant read = ReadFileWords(path);
        EXPECT_TRUE(read == c.expected) << c.what;
    }
}

}  // namespace
}  // namespace zorvane
