// What the kit's tests share: a folder of their own for sources, and measures of surfaces.
#pragma once

#include "mesh/Surface.h"
#include "model/Finish.h"
#include "model/ModelReader.h"
#include "text/Place.h"

#include <gtest/gtest.h>

#include <string>

namespace forge {

// What a step on a source is refused with; empty when it is not.
template <class Action>
std::string faultOf(const Action& action) {
    try {
        action();
    } catch (const SourceError& e) {
        return e.what();
    }
    return {};
}

// A fresh folder for each test, gone afterwards.
class Workshop : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    std::string path(const std::string& name) const { return folder + "/" + name; }
    // Writes a file into the folder and returns its path.
    std::string write(const std::string& name, const std::string& text) const;
    Model model(const std::string& text) const;
    // What the source is refused with, from the line on: "3:5: reason". Empty when it is not refused.
    std::string refusal(const std::string& text) const;

    std::string folder;
};

// The volume a closed surface encloses; negative when it is inside out.
double volumeOf(const Surface& surface);
double areaOf(const Surface& surface);
// Every edge of every triangle is met by exactly one triangle running the other way. Joins equal places
// first.
bool isClosed(Surface surface);

// The triangles of a finished mesh, by material or all.
Surface surfaceOf(const MeshRecord& mesh, const std::string& material = "");

inline testing::AssertionResult near(const Zelkor::Vec3& a, const Zelkor::Vec3& b, float tolerance) {
    if (Zelkor::distance(a, b) <= tolerance) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "(" << a.x << ", " << a.y << ", " << a.z << ") is not (" << b.x
                                       << ", " << b.y << ", " << b.z << ")";
}

} // namespace forge
