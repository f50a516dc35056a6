// The real program from one start to the next: a stage that was cleared stays cleared. Once with recorded keys and
// once in a window, with keys of the system.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class JourneyTest : public ::testing::Test {
  protected:
    JourneyTest() {
        fs::create_directories(folder / "data/levels");
        for (const auto& entry : fs::directory_iterator(RUSTPIKE_DATA))
            if (entry.path().filename() != "levels")
                fs::create_symlink(entry.path(), folder / "data" / entry.path().filename());
        for (const auto& entry : fs::directory_iterator(RUSTPIKE_DATA "/levels"))
            if (entry.path().stem() != "level000")
                fs::create_symlink(entry.path(), folder / "data/levels" / entry.path().filename());
        std::ofstream level(folder / "data/levels/level000.level"); // a first stage of a few steps
        level << "0 0 12 1";
        for (int x = 0; x < 120; x += 10)
            level << " tiles/area1/ground1 " << x << " 0 0";
        std::ofstream(folder / "data/levels/level000.event")
            << "{ CameraBounds{ min -5 -25 max 285 95 instant 1 } SpawnPlayer{ pos 20 6 0 rot 0 0 1 0 mesh corvan }"
               " PlayerRect{ min 55 4 max 75 60 triggers 1 3 } OpenMenu{ pos 0 0 0 menu 8 }"
               " StartupTriggers 3 0 1 2 }";
    }
    ~JourneyTest() override { fs::remove_all(folder); }

    int run(const std::string& command) {
        return std::system(("cd " + folder.string() + " && " + command).c_str());
    }
    // The last frame of a run of so many.
    nlohmann::json play(int frames, const std::string& input) {
        std::ofstream(folder / "input") << input;
        const std::string count = std::to_string(frames);
        EXPECT_EQ(run(program + " --headless --size 64x36 --step 0.0166667 --seed 1 --input input --draw-every " +
                      count + " --frames " + count + " --trace trace --trace-every " + std::to_string(frames - 1)),
                  0);
        std::ifstream in(folder / "trace");
        std::string line, last;
        while (std::getline(in, line))
            last = line;
        return nlohmann::json::parse(last, nullptr, false);
    }
    bool saved(const std::string& line) {
        std::ifstream in(folder / "player/settings.sav");
        const std::string text{std::istreambuf_iterator<char>(in), {}};
        return text.find(line + "\r\n") != std::string::npos;
    }

    const fs::path folder = fs::temp_directory_path() / ("rustpike-journey-" + std::to_string(getpid()));
    const std::string program = RUSTPIKE_PROGRAM " --data data --settings player --post off";
};

TEST_F(JourneyTest, AClearedStageIsStillClearedAfterTheNextStart) {
    const auto cleared = play(500, "60 press Z\n64 release Z\n"     // START
                                   "100 press Z\n104 release Z\n"   // the first stage
                                   "200 press Right\n330 release Right\n");
    ASSERT_FALSE(cleared.is_discarded());
    EXPECT_EQ(cleared["stage"], 1);
    EXPECT_TRUE(saved("LevelsCleared 1") && saved("LevelsUnlocked 1"));
    const auto again = play(60, "");
    EXPECT_EQ(again["stage"], 1);
    EXPECT_EQ(again["menus"], nlohmann::json({0})); // the title
    const auto onTheMap = play(220, "60 press Enter\n64 release Enter\n"
                                    "110 press Enter\n114 release Enter\n"); // it is what the map has selected
    EXPECT_EQ(onTheMap["stage"], 1);
    EXPECT_EQ(onTheMap["menus"], nlohmann::json::array());
    EXPECT_TRUE(saved("LevelsUnlocked 1"));
}

TEST_F(JourneyTest, InAWindowTheSameWithKeysOfTheSystem) {
    if (std::system("command -v xvfb-run >/dev/null && command -v xdotool >/dev/null") != 0)
        GTEST_SKIP() << "no Xvfb here: tools/setup.sh installs it";
    std::ofstream(folder / "play.sh") << R"(
        "$@" --size 160x90 --windowed --super-sample 0 &
        for try in $(seq 300); do
            window=$(xdotool search --onlyvisible --name '^Rustpike$' 2>/dev/null | head -n 1)
            [ -z "$window" ] || xdotool windowfocus "$window" keydown Right keydown z
            sleep 0.1
            [ -z "$window" ] || xdotool keyup z
            sleep 0.1
            grep -qs 'LevelsUnlocked 1' player/settings.sav && break
        done
        xdotool keyup Right keydown F12
        sleep 0.4
        kill %1
        wait %1
    )";
    const std::string command = "HOME=$PWD timeout 200 xvfb-run -a -s '-screen 0 320x240x24' bash play.sh " + program;
    EXPECT_EQ(run(command + " >out 2>&1"), 0) << std::ifstream(folder / "out").rdbuf();
    EXPECT_TRUE(saved("LevelsCleared 1") && saved("LevelsUnlocked 1") && saved("Resolution 160 90"));
    EXPECT_FALSE(fs::is_empty(folder / "Pictures")); // F12
    EXPECT_EQ(play(60, "")["stage"], 1);
}

} // namespace
