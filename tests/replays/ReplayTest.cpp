// Plays recorded input through the real program, headless, and compares the state of the game, frame for
// frame, with what it was when the recording was accepted. NAME.input is the recording, NAME.hashes the hash
// of the trace, which has every sixth frame, up to every 60th. Accept a changed game with
// RUSTPIKE_ACCEPT_REPLAYS=1.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr int traceEvery = 6, checkpointFrames = 60;

struct Replay {
    std::string name;
    std::string stage;
    int frames;
    int endEvent; // the one that the way through the stage fires last
};

void PrintTo(const Replay& replay, std::ostream* out) {
    *out << replay.name;
}

const std::vector<Replay>& replays() {
    static const std::vector<Replay> all = {{"stage0", "0", 3060, 36},
                                            {"stage1", "1", 5940, 67},
                                            {"stage2", "2", 6780, 81},
                                            {"ladders", "proving/ladders", 1476, 5},
                                            {"cart", "proving/cart", 720, 12},
                                            {"doors", "proving/doors", 780, 10},
                                            {"flying", "proving/flying", 1020, 5},
                                            {"gravity", "proving/gravity", 960, 5},
                                            {"platforms", "proving/platforms", 1500, 9},
                                            {"planks", "proving/planks", 1320, 8},
                                            {"weapons", "proving/weapons", 1320, 10}};
    return all;
}

fs::path sourceOf(const Replay& replay, const char* extension) {
    return fs::path(REPLAY_FOLDER) / (replay.name + extension);
}

// A line a checkpoint: the frame and the hash of everything up to it (FNV-1a, 64 bits).
std::vector<std::string> hashTrace(const fs::path& trace) {
    std::vector<std::string> checkpoints;
    std::ifstream in(trace);
    std::string line;
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (int frame = 0; std::getline(in, line); frame += traceEvery) {
        line.resize(std::min(line.find(",\"units\":"), line.size())); // scenery may come and go
        for (const char c : line)
            hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
        if (frame % checkpointFrames == checkpointFrames - traceEvery) {
            std::ostringstream text;
            text << frame << ' ' << std::hex << hash;
            checkpoints.push_back(text.str());
        }
    }
    return checkpoints;
}

std::string lastLine(const fs::path& file) {
    std::ifstream in(file);
    std::string line, last;
    while (std::getline(in, line))
        last = line;
    return last;
}

std::vector<std::string> readLines(const fs::path& file) {
    std::vector<std::string> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

struct Run {
    std::vector<std::string> checkpoints;
    nlohmann::json lastFrame;
};

Run play(const Replay& replay, const fs::path& input) {
    const fs::path folder = fs::temp_directory_path() / ("rustpike-replay-" + std::to_string(getpid()));
    fs::create_directories(folder);
    const fs::path trace = folder / "trace";
    std::ostringstream command;
    command << "cd " << folder
            << " && " RUSTPIKE_PROGRAM " --data " RUSTPIKE_DATA
               " --headless --size 64x36 --post off --seed 1 "
            << "--step 0.0166667 --draw-every 30 --stage " << replay.stage << " --frames " << replay.frames
            << " --input " << input << " --trace " << trace << " --trace-every " << traceEvery;
    EXPECT_EQ(std::system(command.str().c_str()), 0) << command.str();
    Run run{hashTrace(trace), nlohmann::json::parse(lastLine(trace), nullptr, false)};
    fs::remove_all(folder);
    return run;
}

class ReplayTest : public ::testing::TestWithParam<Replay> {};

TEST_P(ReplayTest, PlaysAsItWasAccepted) {
    const Replay& replay = GetParam();
    const auto [played, last] = play(replay, sourceOf(replay, ".input"));
    ASSERT_FALSE(last.is_discarded());
    EXPECT_EQ(last["hero"]["dead"], false);
    EXPECT_EQ(last["events"][static_cast<std::size_t>(replay.endEvent)]["fired"], true)
        << "the end is not reached";
    ASSERT_EQ(played.size(), static_cast<std::size_t>(replay.frames / checkpointFrames));
    if (std::getenv("RUSTPIKE_ACCEPT_REPLAYS")) {
        std::ofstream out(sourceOf(replay, ".hashes"));
        for (const std::string& line : played)
            out << line << '\n';
        GTEST_SKIP() << "accepted";
    }
    const auto accepted = readLines(sourceOf(replay, ".hashes"));
    ASSERT_EQ(accepted.size(), played.size());
    for (std::size_t i = 0; i < played.size(); ++i)
        ASSERT_EQ(played[i], accepted[i])
            << "the run first differs in the " << checkpointFrames << " frames up to this one";
}

// Keeps the comparison honest: one key released later must show.
TEST(Replays, AChangedRecordingFails) {
    const Replay& replay =
        *std::min_element(replays().begin(), replays().end(),
                          [](const Replay& a, const Replay& b) { return a.frames < b.frames; });
    auto lines = readLines(sourceOf(replay, ".input"));
    const fs::path changed = fs::temp_directory_path() / (replay.name + "-changed.input");
    {
        std::ofstream out(changed);
        bool delayed = false;
        for (const std::string& line : lines) {
            const auto space = line.find(' ');
            if (!delayed && line.find(" release ") != std::string::npos) {
                out << std::stoi(line) + 3 << line.substr(space) << '\n';
                delayed = true;
            } else {
                out << line << '\n';
            }
        }
        ASSERT_TRUE(delayed);
    }
    const auto accepted = readLines(sourceOf(replay, ".hashes"));
    ASSERT_FALSE(accepted.empty());
    EXPECT_NE(play(replay, changed).checkpoints.back(), accepted.back());
    fs::remove(changed);
}

INSTANTIATE_TEST_SUITE_P(Stages, ReplayTest, ::testing::ValuesIn(replays()),
                         [](const auto& instance) { return instance.param.name; });

} // namespace
