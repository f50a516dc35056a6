#include "tools/Workshop.h"

#include <filesystem>
#include <fstream>
#include <map>

namespace forge {

using Zelkor::Vec3;

void Workshop::SetUp() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    folder = (std::filesystem::temp_directory_path() /
              (std::string("forge_") + test->test_suite_name() + "_" + test->name()))
                 .string();
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
}

void Workshop::TearDown() {
    std::filesystem::remove_all(folder);
}

std::string Workshop::write(const std::string& name, const std::string& text) const {
    const std::string target = path(name);
    std::filesystem::create_directories(std::filesystem::path(target).parent_path());
    std::ofstream(target, std::ios::binary) << text;
    return target;
}

Model Workshop::model(const std::string& text) const {
    return readModel(write("thing.model", text)).model;
}

std::string Workshop::refusal(const std::string& text) const {
    const std::string what = faultOf([&] { finishMesh(model(text)); }), file = path("thing.model") + ":";
    return what.starts_with(file) ? what.substr(file.size()) : what;
}

double volumeOf(const Surface& surface) {
    double volume = 0;
    for (const Triangle& t : surface.triangles) {
        const auto at = [&](std::size_t k) { return surface.positions[static_cast<std::size_t>(t[k])]; };
        volume += static_cast<double>(dot(at(0), cross(at(1), at(2)))) / 6;
    }
    return volume;
}

double areaOf(const Surface& surface) {
    double area = 0;
    for (const Triangle& t : surface.triangles) {
        const auto at = [&](std::size_t k) { return surface.positions[static_cast<std::size_t>(t[k])]; };
        area += static_cast<double>(Zelkor::length(cross(at(1) - at(0), at(2) - at(0)))) / 2;
    }
    return area;
}

bool isClosed(Surface surface) {
    weld(surface);
    std::map<std::pair<int, int>, int> balance;
    for (const Triangle& t : surface.triangles)
        for (std::size_t k = 0; k < 3; ++k) {
            const int a = t[k], b = t[(k + 1) % 3];
            balance[{std::min(a, b), std::max(a, b)}] += a < b ? 1 : -1;
        }
    for (const auto& [edge, count] : balance)
        if (count != 0) return false;
    return !surface.triangles.empty();
}

Surface surfaceOf(const MeshRecord& mesh, const std::string& material) {
    Surface surface;
    surface.positions = mesh.positions;
    for (const auto& submesh : mesh.submeshes)
        if (material.empty() || submesh.material == material)
            surface.triangles.insert(surface.triangles.end(), submesh.triangles.begin(),
                                     submesh.triangles.end());
    return surface;
}

} // namespace forge
