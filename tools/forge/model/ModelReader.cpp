#include "model/ModelReader.h"

#include "model/PartReader.h"
#include "rig/RigReader.h"

#include <filesystem>

namespace forge {
namespace {

class ModelReader {
  public:
    explicit ModelReader(const std::vector<std::string>& includeFolders) : interpreter(includeFolders) {}

    ModelSource read(const std::string& path) {
        model.name = std::filesystem::path(path).stem().string();
        Scope scope;
        interpreter.runFile(path, scope, handler());
        if (model.parts.empty()) throw SourceError({path, 1, 1}, "the model has no part and no solid");
        model.clips = std::move(rigSource.clips);
        return {std::move(model), interpreter.files()};
    }

  private:
    Interpreter::Handler handler() {
        return placing(interpreter, placement,
                       [this](const Statement& s, Scope& inner) { statement(s, inner); });
    }

    void statement(const Statement& s, Scope& scope) {
        if (s.keyword == "part") {
            readFieldPart(s, scope, interpreter, placement, model);
        } else if (s.keyword == "solid") {
            readSolidPart(s, scope, interpreter, placement, model);
        } else if (s.keyword == "rig") {
            if (!model.parts.empty()) throw SourceError(s.place, "the rig comes before the parts it carries");
            readRig(s, scope, interpreter, rigSource);
            model.rig = rigSource.rig;
        } else if (s.keyword == "pose") {
            readPose(s, scope, interpreter, rigSource);
        } else if (s.keyword == "clip") {
            readClip(s, scope, interpreter, rigSource);
        } else if (s.keyword == "triangles") {
            model.triangles = static_cast<int>(one(s, scope, 12, 50000));
        } else if (s.keyword == "texture") {
            model.texture = one(s, scope, 0.01f, 1e5f);
        } else if (s.keyword == "bounds") {
            model.boundsMargin = one(s, scope, 0, 1e4f);
        } else if (s.keyword == "facing") {
            facing(s, scope);
        } else {
            failUnknown(
                s, std::string("part solid rig pose clip triangles texture bounds facing let if repeat each "
                               "define use include ") +
                       transformKeywords);
        }
    }

    static float one(const Statement& s, const Scope& scope, float least, float most) {
        const Arguments args(s, scope, "value");
        const float value = args.number("value");
        if (value < least || value > most)
            args.fail("value",
                      s.keyword + " lies between " + std::to_string(least) + " and " + std::to_string(most));
        return value;
    }

    // A figure drawn from its side, looking along +x, is turned to look along +z, as the game expects.
    void facing(const Statement& s, const Scope& scope) {
        const Arguments args(s, scope, "axis");
        const std::string axis = args.name("axis");
        if (axis != "x" && axis != "z") args.fail("axis", "facing x or facing z");
        model.yaw = axis == "x" ? -90.0f : 0.0f;
    }

    Interpreter interpreter;
    Placement placement;
    RigSource rigSource;
    Model model;
};

} // namespace

ModelSource readModel(const std::string& path, const std::vector<std::string>& includeFolders) {
    return ModelReader(includeFolders).read(path);
}

} // namespace forge
