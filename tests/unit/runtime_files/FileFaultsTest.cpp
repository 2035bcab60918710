// Every system call of reading and saving fails once, at every place where it is made.

#include <sys/wait.h>

#include "tests/support/Testing.h"
#include "tests/unit/runtime_files/FaultyCalls.h"
#include "tests/unit/runtime_files/UnixFolder.h"

namespace zorvane {
namespace {

// Longer than one piece of the tail, so that copying it takes several calls.
const std::string kOld = std::string(4, '\xff') + std::string(80'001, 'o');
const std::string kWords = std::string(4, '\xff') + std::string(9'996, 'n');
const std::string kNew = kWords + kOld.substr(kWords.size());

using Names = std::vector<std::string>;

bool CanBeInterrupted(std::string_view call) {
    return call == "openat" || call.starts_with('p') || call == "fsync";
}

// InPlace: the file that was there has been written; Unsure: the new one may not outlast a crash.
enum After { Old, New, InPlace, Unsure };

TEST(SaveFileWords, EachFailureOfTheSystemLeavesOldOrNewAsStatedAndIsAnswered) {
    const std::tuple<const char*, Fault, After> cases[] = {
        {"directory cannot be opened", {"openat", 1, EMFILE, true}, Old},
        {"file cannot be opened for writing", {"openat", 2, EACCES}, Old},
        {"too many files when the new one is to be made", {"openat", 4, EMFILE, true}, Old},
        {"files without a name are unknown here", {"openat", 4, EOPNOTSUPP}, New},
        {"directory takes no new file", {"openat", 4, EACCES, true}, InPlace},
        {"owner cannot be looked up", {"fstat", 1, EIO}, Old},
        {"mode cannot be kept", {"fchmod", 1, EPERM, true}, InPlace},
        {"no space can be reserved", {"posix_fallocate", 1, ENOSPC, true}, Old},
        {"space cannot be reserved on this file system",
         {"posix_fallocate", 1, EOPNOTSUPP, true},
         New},
        {"disk full in the words", {"pwrite", 1, ENOSPC, true}, Old},
        {"disk full in the tail", {"pwrite", 2, ENOSPC, true}, Old},
        {"writing comes to half, time and again", {"pwrite", 1, kShortCount, true}, New},
        {"the old tail cannot be read", {"pread", 2, EIO, true}, Old},
        {"the bytes do not reach the disk", {"fsync", 1, EIO}, Old},
        {"syncing is unknown here", {"fsync", 1, EINVAL, true}, New},
        {"the directory does not reach the disk", {"fsync", 2, EIO}, Unsure},
        {"the folder cannot be tidied", {"fdopendir", 1, ENOMEM}, New},
        {"an attribute cannot be kept", {"fsetxattr", 1, EPERM}, InPlace},
        {"what the folder gave cannot be taken away", {"fremovexattr", 1, EIO}, Old},
        {"no room for an attribute", {"fsetxattr", 1, EDQUOT}, Old},
        {"others come in between time and again", {"renameat", 1, ENOENT, true}, Old},
        {"no lock to be had", {"flock", 1, ENOLCK, true}, New},
        {"the new file gets no name", {"linkat", 1, ENOENT}, New},
        {"the name is a mount point", {"renameat", 1, EBUSY, true}, InPlace},
        {"the directory is sticky", {"renameat", 1, EPERM, true}, InPlace},
        {"renaming fails on the disk", {"renameat", 1, EIO}, Old},
    };
    for (const auto& [what, fault, expected] : cases) {
        SCOPED_TRACE(what);
        const UnixFolder folder;
        folder.Put("file", kOld);
        folder.SetAttribute("file", "user.origin", "here");
        const ino_t inode = folder.State("file").st_ino;
        {
            const Armed armed(fault);
            const std::error_code error = SaveFileWords(folder.At("file"), WordsOf(kWords));
            EXPECT_TRUE(armed.Hit());
            EXPECT_EQ(armed.MadeWith() & 0077, 0u) << "a private file is open while it is saved";
            const int told = fault.Error == ENOENT   ? EAGAIN
                             : fault.Error == EDQUOT ? ENOSPC
                                                     : fault.Error;
            EXPECT_EQ(error.value(), expected == Old || expected == Unsure ? told : 0);
        }
        EXPECT_TRUE(folder.Bytes("file") == (expected == Old ? kOld : kNew));
        EXPECT_EQ(folder.State("file").st_ino == inode, expected == Old || expected == InPlace);
        EXPECT_EQ(folder.Others({"file"}), Names());
    }
}

struct Way {
    const char* what;
    bool unnamed, linked;
    std::size_t old;    // bytes before; 0: no file
    std::string order;  // of what reaches the disk, as Armed::Order() tells it
};
const Way kWays[] = {
    {"a new file without a name", true, false, kOld.size(), "wfrd"},
    {"a new file under a temporary name", false, false, kOld.size(), "wfrd"},
    {"in place", true, true, kOld.size(), "mfwfmf"},
    {"in place, and longer", true, true, 100, "mfwfmf"},
    {"no file before", true, false, 0, "wfrd"},
};

// Whether a process of its own, which does the work, is killed.
template <class Work>
bool IsKilled(Work&& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    int status = 0;
    Must(::waitpid(child, &status, 0) == child);
    return WIFSIGNALED(status);
}

// One save with the fault; false when the fault was not reached.
bool Try(const Way& way, const Fault& fault) {
    SCOPED_TRACE(testing::Message()
                 << way.what << ": " << fault.At << " " << fault.Nth << " fails with "
                 << fault.Error << (fault.FromThenOn ? " from then on" : ""));
    // A disk in memory where there is one: real ones take their time for thousands of savings.
    const bool memory = ::access("/dev/shm", W_OK | X_OK) == 0;
    const UnixFolder folder(memory ? "/dev/shm" : std::filesystem::temp_directory_path());
    if (way.old > 0) {
        folder.Put("file", kOld.substr(0, way.old));
        folder.SetAttribute("file", "user.origin", "here");
    }
    if (way.linked) std::filesystem::create_hard_link(folder.At("file"), folder.At("name"));
    const std::optional<std::string> old = folder.Bytes("file");
    const std::string whole = way.old > kWords.size() ? kNew : kWords;
    const Variant words = WordsOf(kWords);
    const std::filesystem::path path = folder.At("file");
    std::error_code error;
    const auto save = [&] {
        const Armed armed(fault, way.unnamed, [&] {
            for (const std::string& left : folder.Others({"file", "name"}))
                std::filesystem::remove(folder.At(left));
        });
        error = SaveFileWords(path, words);
        EXPECT_TRUE(armed.Hit() || armed.Order() == way.order) << armed.Order();
        return armed.Hit();
    };
    const bool kills = fault.Error == kKilled || fault.Error == kKilledHalfway;
    const bool hit = kills ? IsKilled(save) : save();
    const std::optional<std::string> now = folder.Bytes("file");
    // Where the disk or the process has died in the middle of writing in place, there is no stream
    // any more; or the old one, in front of room for more.
    const bool killedInPlace = kills && way.linked;
    const bool died = fault.FromThenOn || fault.Error == kShortThenDead || killedInPlace;
    const bool lost = died && way.old > 0 && now && !now->starts_with(kOld.substr(0, 4));
    const bool longer = killedInPlace && now->starts_with(*old);
    EXPECT_TRUE(now == old || now == whole || lost || longer) << "torn";
    if ((fault.Error == EINTR || fault.Error == kShortCount) && CanBeInterrupted(fault.At)) {
        EXPECT_TRUE(now == whole) << "not saved";
    }
    EXPECT_TRUE(kills || error || now == whole) << "said to be saved, and is not";
    EXPECT_TRUE(fault.Error != kMeanwhile || !error) << "not tried again";
    if (kills) (void)SaveFileWords(path, words);  // takes away what was left
    EXPECT_EQ(folder.Others({"file", "name"}), Names());
    return hit;
}

TEST(SaveFileWords, AFailureOrTheEndAtAnyCallLeavesOldOrNewAndNothingBeside) {
    int trials = 0;
    for (const Way& way : kWays)
        for (const std::string_view call : kCalls)
            for (const int error : {EIO, ENOSPC, EACCES, EPERM, EMFILE, ENOMEM, EINTR, kShortCount,
                                    kShortThenDead, kKilled, kKilledHalfway, kMeanwhile})
                for (const bool fromThenOn : {false, true}) {
                    // An interruption without end would be tried for ever.
                    if (fromThenOn && error != EIO && error != EACCES) continue;
                    if (error <= kKilled && call == kAllocation) continue;
                    if (error == kKilledHalfway && call != "pwrite") continue;
                    Fault fault{call, 1, error, fromThenOn};
                    for (; Try(way, fault); ++fault.Nth) ++trials;
                }
    EXPECT_GT(trials, 500);
}

// Catches a file that is put back, or gone on with, as it was before others had their turn.
TEST(SaveFileWords, WhatAnotherProcessDoesWhileThisOneWaitsIsNotLost) {
    for (const bool replaced : {false, true}) {
        const UnixFolder folder;
        folder.Put("file", kOld.substr(0, 100));
        if (replaced) folder.Put("other", kOld + "longer");
        std::filesystem::create_hard_link(folder.At("file"), folder.At("name"));
        std::optional<Armed> full;
        const Armed armed({"flock", 1, kMeanwhile}, true, [&] {
            if (replaced) return std::filesystem::rename(folder.At("other"), folder.At("file"));
            folder.Put("file", kOld + "longer");
            full.emplace(Fault{"pwrite", 2, ENOSPC});
        });
        EXPECT_EQ(!SaveFileWords(folder.At("file"), WordsOf(kWords)), replaced);
        EXPECT_TRUE(folder.Bytes("file") == (replaced ? kNew : kOld) + "longer");
    }
}

TEST(ReadFileWords, AFailureAtAnyCallGivesEmptyOrTheWordsReadSoFar) {
    const Folder folder;
    folder.Put("file", kWords);
    const Text path = folder.At("file");
    const Variant whole = WordsOf(kWords);
    const Variant unread = WordsOf(std::string(kWords.size(), '\0'));
    const std::tuple<const char*, Fault, Variant> cases[] = {
        {"too many files", {"openat", 1, EMFILE}, {}},
        {"opening is interrupted", {"openat", 1, EINTR}, whole},
        {"kind of file unknown", {"fstat", 1, EIO}, {}},
        {"nothing can be read", {"pread", 1, EIO}, unread},
        {"reading is interrupted", {"pread", 1, EINTR}, whole},
        {"reading comes to half", {"pread", 1, kShortCount}, whole},
        {"half is read", {"pread", 2, EIO}, whole},
        {"no memory for the path", {kAllocation, 1, 1}, {}},
        {"no memory for the words", {kAllocation, 2, 1}, {}},
    };
    for (const auto& [what, fault, expected] : cases) {
        const Armed armed(fault);
        const Variant read = ReadFileWords(path);
        EXPECT_TRUE(read == expected) << what;
    }
}

}  // namespace
}  // namespace zorvane
