#include "io/SafeFile.h"

#include "support/TempData.h"

#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Zelkor;

class SafeFileTest : public ::testing::Test {
  protected:
    std::string text() const {
        const auto content = file.read();
        return content ? (content->fromBackup ? "backup " : "") + content->text : "nothing";
    }
    TempData folder;
    SafeFile file{folder.folder() / "Zoë" / "a.sav", [](std::string_view text) { return text.ends_with('.'); }};
};

TEST_F(SafeFileTest, OfTwoTheWholeOneIsRead) {
    EXPECT_EQ(text(), "nothing");
    EXPECT_EQ(file.write("one."), "");
    EXPECT_EQ(file.write("two."), "");
    EXPECT_EQ(text(), "two.");
    folder.write("Zoë/a.sav", "thr");
    EXPECT_EQ(text(), "backup one.");
    EXPECT_EQ(file.write("four."), ""); // what is cut short is no backup
    std::filesystem::remove(folder.folder() / "Zoë/a.sav");
    EXPECT_EQ(text(), "backup one.");
    folder.write("Zoë/a.sav.bak", "si");
    EXPECT_EQ(text(), "backup si");
}

TEST_F(SafeFileTest, KilledOrFailedAtAnyStepASaveLosesNothing) {
    ASSERT_EQ(file.write("old."), "");
    constexpr int steps = 8; // the backup's four and the file's
    for (int bad = 0; bad < steps; ++bad) {
        int step = 0;
        if (const pid_t child = ::fork(); child == 0) {
            file.beforeStep = [&](auto&&...) { return step++ != bad || ::raise(SIGKILL) == 0; };
            file.write("new.");
            ::_exit(0);
        } else {
            int status = 0;
            ASSERT_EQ(::waitpid(child, &status, 0), child);
            EXPECT_TRUE(WIFSIGNALED(status)) << bad;
        }
        EXPECT_EQ(text(), "old.") << bad;
        file.beforeStep = [&](auto&&...) { return step++ < bad; };
        EXPECT_NE(file.write("new."), "") << bad;
        EXPECT_EQ(text(), "old.") << bad;
    }
    file.beforeStep = {};
    EXPECT_EQ(file.write("new."), ""); // over everything the others left behind
    EXPECT_EQ(text(), "new.");
}

TEST_F(SafeFileTest, TheSystemsReasonIsTold) {
    ASSERT_EQ(file.write("old."), "");
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{16, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &small);
    const std::string reason = file.write("longer than the disk is."); // its first bytes fit
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_NE(reason.find("cannot write"), std::string::npos) << reason;
    EXPECT_EQ(text(), "old.");
}

} // namespace
