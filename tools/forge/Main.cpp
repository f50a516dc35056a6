// forge: turns the sources under assets/ into the files the game reads, and shows them.
#include "font/FontReader.h"
#include "model/Finish.h"
#include "model/ModelReader.h"
#include "picture/Sheet.h"
#include "stage/StageCommand.h"
#include "texture/TextureReader.h"
#include "write/OutputFile.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <filesystem>

namespace {

using namespace forge;

struct Options {
    std::string input, output, depfile, unitFolder, assets, map;
    std::string outlines = "/usr/share/fonts/truetype";
    std::vector<std::string> includes, sources;
    PictureOptions picture;
};

void makeModel(const Options& options) {
    ModelSource source = readModel(options.input, options.includes);
    // "./a" and "a" are the same folder, "." and "" none.
    const std::string within = std::filesystem::path(options.unitFolder).lexically_normal().generic_string();
    source.model.unitFolder = within == "." || within == "./" ? "" : within;
    const std::filesystem::path folder(options.output);
    const std::string mesh = (folder / (source.model.name + ".mesh")).string();
    if (!source.model.rig.joints.empty())
        writeFile((folder / (source.model.name + ".skel")).string(),
                  encodeSkeleton(finishSkeleton(source.model)));
    writeFile(mesh, encodeMesh(finishMesh(source.model)));
    if (!options.depfile.empty()) writeDepfile(options.depfile, mesh, source.files);
}

void makeTexture(const Options& options) {
    const TextureSource source = readTexture(options.input, options.includes);
    writeFile(options.output, encodeTga(source.image));
    if (!options.depfile.empty()) writeDepfile(options.depfile, options.output, source.files);
}

void makeFonts(const Options& options) {
    const std::filesystem::path folder(options.output);
    std::vector<FontSheet> sheets;
    std::vector<std::string> files;
    for (const std::string& path : options.sources) {
        const FontSource source = readFont(path, options.outlines);
        files.insert(files.end(), source.files.begin(), source.files.end());
        sheets.push_back(drawFont(source.settings));
        writeFile((folder / "textures" / (source.settings.texture + ".tga")).string(),
                  encodeTga(sheets.back().image));
    }
    const std::string description = (folder / "sample.fnt").string(), text = describeFonts(sheets);
    writeFile(description, Bytes(text.begin(), text.end()));
    if (!options.depfile.empty()) writeDepfile(options.depfile, description, files);
}

void makePicture(const Options& options) {
    writePng(options.output, drawPicture(loadUnit(options.input, options.includes), options.picture));
}

void addCommands(CLI::App& app, Options& options) {
    CLI::App* model =
        app.add_subcommand("model", "Make NAME.mesh, and NAME.skel for a rigged model, from NAME.model");
    model->add_option("source", options.input, "the .model source")->required();
    model->add_option("folder", options.output, "where the results go")->required();
    model->add_option("--include", options.includes, "folders that `include` and fonts are also looked for in");
    model->add_option("--unit-folder", options.unitFolder, "the folder of the results within data/units");
    model->add_option("--depfile", options.depfile, "write the sources read, for the build");
    model->callback([&] { makeModel(options); });

    CLI::App* texture = app.add_subcommand("texture", "Make a .tga from a .texture source");
    texture->add_option("source", options.input, "the .texture source")->required();
    texture->add_option("tga", options.output, "the result")->required();
    texture->add_option("--include", options.includes, "folders that `include` and fonts are also looked for in");
    texture->add_option("--depfile", options.depfile, "write the sources read, for the build");
    texture->callback([&] { makeTexture(options); });

    CLI::App* font = app.add_subcommand("font", "Make sample.fnt and its textures from .font sources");
    font->add_option("data", options.output, "the data folder")->required();
    font->add_option("sources", options.sources, "the .font sources")->required();
    font->add_option("--outlines", options.outlines, "the folder that their files are named from");
    font->add_option("--depfile", options.depfile, "write the sources read, for the build");
    font->callback([&] { makeFonts(options); });

    CLI::App* stage =
        app.add_subcommand("stage", "Make levelNNN.level and levelNNN.event from a .stage source");
    stage->add_option("source", options.input, "the .stage source")->required();
    stage->add_option("folder", options.output, "where the results go")->required();
    stage->add_option("--assets", options.assets, "the assets folder, for the tiles' definitions");
    stage->add_option("--map", options.map, "draw the stage to this .png");
    stage->callback([&] { compileStage({options.input, options.output, options.assets, options.map}); });

    CLI::App* info = app.add_subcommand("info", "Tell what a .mesh holds");
    info->add_option("mesh", options.input)->required();
    info->callback([&] { std::fputs(describeUnit(loadUnit(options.input)).c_str(), stdout); });

    CLI::App* picture = app.add_subcommand("picture", "Draw a .mesh (or, straight away, a .model) to a .png");
    picture->add_option("mesh", options.input)->required();
    picture->add_option("png", options.output)->required();
    picture->add_option("--include", options.includes, "folders that `include` also looks in");
    picture->add_option("--clip", options.picture.clip, "show this clip");
    picture->add_option("--time", options.picture.time, "at this many seconds");
    picture->add_option("--yaw", options.picture.yaw,
                        "degrees about the vertical; 90 shows a figure looking right");
    picture->add_option("--pitch", options.picture.pitch, "degrees leaned to the viewer");
    picture->add_option("--size", options.picture.size, "pixels of the largest view");
    picture->add_flag("--sheet", options.picture.sheet, "a row a clip, at several moments");
    picture->add_option("--clips", options.picture.clips, "on a sheet, only these clips")->delimiter(',');
    picture->add_option("--moments", options.picture.moments, "moments a row of a sheet");
    picture->callback([&] { makePicture(options); });
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Makes the game's data from its sources");
    app.require_subcommand(1);
    Options options;
    addCommands(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return app.exit(e);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
    return 0;
}
