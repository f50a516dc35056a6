// The real program, started cold: what a player presses on the way from the loading screen to the door.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// Each stack of menus that differs from the one before, bottom first, with whether "game" stands.
std::vector<std::string> stacks(const fs::path& trace) {
    std::vector<std::string> found;
    std::ifstream in(trace);
    for (std::string line; std::getline(in, line);) {
        const auto frame = nlohmann::json::parse(line);
        const std::string stack =
            frame["menus"].dump() + (frame["timers"]["game"]["paused"].get<bool>() ? " held" : "");
        if (found.empty() || found.back() != stack) found.push_back(stack);
    }
    return found;
}

// The options, a key assigned, another left as it was, back, and out by QUIT.
TEST(ColdStart, ThroughTheOptionsToTheDoor) {
    const fs::path folder = fs::temp_directory_path() / ("rustpike-cold-" + std::to_string(getpid()));
    fs::create_directories(folder);
    std::ofstream(folder / "input") << "0 mouse 0.5 0.5\n"
                                       "50 press Down\n52 release Down\n55 press Enter\n57 release Enter\n"
                                       "120 press Down\n122 release Down\n125 press Right\n127 release Right\n"
                                       "130 press Z\n132 release Z\n150 press A\n152 release A\n"
                                       "180 press Z\n182 release Z\n200 press Escape\n202 release Escape\n"
                                       "230 press Escape\n232 release Escape\n"
                                       "290 press Down\n292 release Down\n295 press Z\n297 release Z\n";
    const std::string command = "cd " + folder.string() +
                                " && " RUSTPIKE_PROGRAM " --data " RUSTPIKE_DATA
                                " --headless --size 64x36 --post off --seed 1 --step 0.0166667 --draw-every 60"
                                " --frames 400 --settings . --input input --trace trace";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(stacks(folder / "trace"),
              (std::vector<std::string>{"[7]", "[7,0]", "[0]", "[0,1]", "[0,1,6] held", "[0,1]", "[0,1,6] held",
                                        "[0,1]", "[0]"}));
    std::ifstream saved(folder / "settings.sav"); // at the end of the run
    const std::string settings((std::istreambuf_iterator<char>(saved)), {});
    EXPECT_NE(settings.find("LeftKey 65"), std::string::npos) << settings;
    fs::remove_all(folder);
}

} // namespace
