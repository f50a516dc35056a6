// A data folder of the running test's own, for its lifetime.
#pragma once

#include "io/DataFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

class TemporaryDataFolder {
  public:
    TemporaryDataFolder() {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        // Tests run side by side, each in its own process.
        root = std::filesystem::path(::testing::TempDir()) /
               (std::string("rustpike.") + test->test_suite_name() + "." + test->name());
        std::filesystem::remove_all(root);
        std::filesystem::create_directories(data());
        Zelkor::setDataFolder(data());
    }
    ~TemporaryDataFolder() {
        Zelkor::setDataFolder("data");
        std::filesystem::remove_all(root);
    }
    TemporaryDataFolder(const TemporaryDataFolder&) = delete;

    template <class Bytes>
    void write(const std::string& name, const Bytes& bytes) const {
        std::filesystem::create_directories((data() / name).parent_path());
        std::ofstream(data() / name, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    std::filesystem::path data() const { return root / "data"; }

    std::filesystem::path root;
};
