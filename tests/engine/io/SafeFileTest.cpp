#include "io/SafeFile.h"

#include "support/TempData.h"

#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Zelkor;
namespace fs = std::filesystem;

bool endsWithFullStop(std::string_view text) {
    return text.ends_with('.');
}

class SafeFileTest : public ::testing::Test {
  protected:
    std::string text() const {
        const auto content = file.read();
        return content ? (content->fromBackup ? "backup " : "") + content->text : "nothing";
    }
    // How many steps a save goes through; each calls atStep with its number.
    int save(const std::string& content, const std::function<bool(int)>& atStep) {
        int steps = 0;
        file.beforeStep = [&](const fs::path&, SaveStep) { return atStep(steps++); };
        trouble = file.write(content);
        return steps;
    }

    TempData folder;
    SafeFile file{folder.folder() / "Zoë" / "a.sav", endsWithFullStop};
    std::string trouble;
};

TEST_F(SafeFileTest, OfTwoTheWholeOneIsRead) {
    EXPECT_EQ(text(), "nothing");
    EXPECT_EQ(file.write("one."), "");
    EXPECT_EQ(file.write("two."), "");
    EXPECT_EQ(text(), "two.");
    folder.write("Zoë/a.sav", "thr");
    EXPECT_EQ(text(), "backup one.");
    EXPECT_EQ(file.write("four."), ""); // what is cut short is no backup
    fs::remove(folder.folder() / "Zoë/a.sav");
    EXPECT_EQ(text(), "backup one.");
    folder.write("Zoë/a.sav", "fi");
    folder.write("Zoë/a.sav.bak", "si");
    EXPECT_EQ(text(), "fi");
    folder.write("Zoë/a.sav", std::string(SafeFile::maxSize + 1, '.'));
    EXPECT_EQ(text(), "backup si");
}

TEST_F(SafeFileTest, AKilledSaveLeavesTheOldFile) {
    ASSERT_EQ(file.write("old."), "");
    ASSERT_EQ(save("old.", [](int) { return true; }), 8); // the backup's four steps and the file's
    for (int fatal = 0; fatal < 8; ++fatal) {
        const pid_t child = ::fork();
        if (child == 0) {
            save("new.", [fatal](int step) { return step != fatal || ::raise(SIGKILL) == 0; });
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << fatal;
        EXPECT_EQ(text(), "old.") << fatal;
    }
    EXPECT_EQ(file.write("new."), ""); // over everything the killed ones left behind
    EXPECT_EQ(text(), "new.");
}

TEST_F(SafeFileTest, AFailedSaveLosesNothingAndSaysWhy) {
    ASSERT_EQ(file.write("old."), "");
    for (int failing = 0; failing < 8; ++failing) {
        save("new.", [failing](int step) { return step < failing; });
        EXPECT_NE(trouble, "") << failing;
        EXPECT_EQ(text(), "old.") << failing;
    }
    save("newer.", [](int step) { return step != 1; });
    EXPECT_NE(trouble.find("without a backup"), std::string::npos) << trouble;
    EXPECT_EQ(text(), "newer.");
    file.beforeStep = {};

    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{16, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    trouble = file.write("longer than the disk is."); // its first bytes fit
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_NE(trouble.find("cannot write"), std::string::npos) << trouble;
    EXPECT_EQ(text(), "newer.");

    const auto inTheWay = folder.write("file", "");
    EXPECT_NE(SafeFile(inTheWay / "below" / "a.sav", endsWithFullStop).write("new.").find("cannot create"),
              std::string::npos);
}

TEST_F(SafeFileTest, ALinkStaysALink) {
    const auto target = folder.write("target.sav", "old.");
    const fs::path link = folder.folder() / "link.sav";
    fs::create_symlink(target, link);
    EXPECT_EQ(SafeFile(link, endsWithFullStop).write("new."), "");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(SafeFile(target, endsWithFullStop).read()->text, "new.");
}

} // namespace
