#include "frontend/MapBoard.h"

#include "core/EngineManagers.h"
#include "frontend/MenuText.h"
#include "gui/GuiSprite.h"
#include "render/Material.h"
#include "render/Renderer.h"
#include "resources/Unit.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Zelkor;

namespace {

constexpr float itemRate = 5;    // opacity per second
constexpr float itemDelay = 0.3f, pathDelay = 0.15f; // of it, behind the item before, behind its own item
constexpr float pathWidth = 0.5f, pathGap = 5.4f;    // units; the gap: from the middle of an item
constexpr float markerSize = 17, holeSize = 2;
constexpr float captionX = 70, captionY = -11.5f, captionHeight = 8; // its middle and its lower edge
constexpr float overSheet = 0.6f; // towards the viewer, clear of the sheet's outline
constexpr Vec4 pathColour{0.3f, 0.22f, 0.2f, 1}, captionColour{0.45f, 0.16f, 0.12f, 1};
constexpr std::size_t pictureUnit = 2; // of the sheet's material
constexpr const char* sheetMaterial = "map_sheet";

// From units of the board to those of a panel on it.
Vec3 onPanel(const Vec2& board) {
    return {board.x, -board.y, 0};
}

// A square is turned about its upper left corner: where that has to lie for its middle to stay.
Vec3 turnedAbout(const Vec2& middle, float size, float angle) {
    const float half = size / 2, c = std::cos(angle), s = std::sin(angle);
    return onPanel(middle) - Vec3{half * (c - s), half * (s + c), 0};
}

GuiSprite* squareSprite(GuiPanel& panel, const char* definition, const Vec3& at, float size) {
    GuiSprite* sprite = panel.createSprite(definition, at);
    sprite->width = sprite->height = size;
    return sprite;
}

void mirror(GuiObject& sprite) {
    if (GuiCorners* corners = sprite.textureData()) {
        std::swap((*corners)[0], (*corners)[2]);
        std::swap((*corners)[4], (*corners)[6]);
    }
}

Material* pictureOf(Unit& sheet) {
    for (RenderItem& item : sheet.items)
        if (item.material().name == sheetMaterial) return &item.ownMaterial();
    return nullptr;
}

} // namespace

MapBoard::MapBoard(MenuManager& manager)
    : manager_(manager), sheet_(manager.menuScene.createUnit("title/map")), panel_(manager) {
    GuiPanel& root = panel_.root();
    way_ = static_cast<GuiPanel*>(root.createChild(GuiKind::panel, 0, 0, 0, 1, 1));
    marker_ = squareSprite(root, "sprites/mapmarker", {}, markerSize);
    caption_ = &sceneText(root, "MENUFONT", "", {}, captionHeight);
    caption_->colour = captionColour;
}

MapBoard::~MapBoard() {
    manager_.menuScene.removeUnit(sheet_);
}

void MapBoard::place(const Vec3& corner) {
    sheet_->position = corner;
    panel_.place(corner + Vec3{0, 0, overSheet});
}

void MapBoard::show(int page, int unlockedStage, int clearedMask) {
    way_->deleteChildren();
    icons_.clear();
    paths_.clear();
    items_ = MapPage::items(page, unlockedStage);
    for (std::size_t i = 0; i + 1 < items_.size(); ++i)
        addPath(items_[i], items_[i + 1]);
    for (const MapItem& item : items_)
        addItem(item, MapPage::icon(item.stage, unlockedStage, clearedMask));
    if (Material* material = pictureOf(*sheet_); material && material->textureUnits.size() > pictureUnit)
        material->textureUnits[pictureUnit].texture =
            engineManagers()->renderer->getTexture(MapPage::picture(page));
    erased_ = 1;
    clock_ = 0;
    showProgress();
}

void MapBoard::addPath(const MapItem& from, const MapItem& to) {
    const Vec3 start = onPanel(from.centre()), way = onPanel(to.centre()) - start;
    const float length = std::sqrt(dot(way, way));
    const Vec3 along = way * (1 / length), aside{along.y, -along.x, 0};
    const Vec3 corner = start + along * pathGap + aside * (pathWidth / 2);
    GuiObject* path = way_->createChild(GuiKind::rect, corner.x, corner.y, 0, length - 2 * pathGap, pathWidth);
    path->angle = std::atan2(along.y, along.x);
    path->colour = pathColour;
    paths_.push_back(path);
}

void MapBoard::addItem(const MapItem& item, const char* icon) {
    const Vec3 at = onPanel({item.corner.x, item.corner.y + MapItem::size});
    const bool isStage = item.kind == MapItem::Kind::stage;
    GuiSprite* sprite = squareSprite(*way_, isStage ? "maps/mapicons" : "maps/maparrows", at, MapItem::size);
    if (isStage) sprite->setAnimation(icon);
    if (item.kind == MapItem::Kind::previousPage) mirror(*sprite);
    icons_.push_back(sprite);
}

void MapBoard::reveal(float dt) {
    erased_ = std::max(erased_ - dt, 0.0f);
    clock_ += dt;
    showProgress();
}

float MapBoard::itemOpacity(std::size_t item) const {
    return clamp(itemRate * clock_ - itemDelay * static_cast<float>(item), 0, 1);
}

float MapBoard::pathOpacity(std::size_t item) const {
    return clamp(itemRate * clock_ - itemDelay * static_cast<float>(item) - pathDelay, 0, 1);
}

void MapBoard::showProgress() {
    for (std::size_t i = 0; i < icons_.size(); ++i)
        icons_[i]->colour.w = itemOpacity(i);
    for (std::size_t i = 0; i < paths_.size(); ++i)
        paths_[i]->colour.w = pathOpacity(i);
    if (Material* material = pictureOf(*sheet_))
        for (ShaderParam& parameter : material->shaderParams)
            if (parameter.name == "erase") parameter.value = erased_;
}

int MapBoard::itemAt(const Vec2& screen) const {
    const Vec2 point = panel_.pointAt(screen.x, screen.y); // y down
    for (std::size_t i = 0; i < items_.size(); ++i) {
        const Vec2 from = items_[i].corner;
        if (MenuRect{from.x, from.y, from.x + MapItem::size, from.y + MapItem::size}.contains(
                {point.x, -point.y}))
            return static_cast<int>(i);
    }
    return -1;
}

void MapBoard::showMarker(const MapItem& item, float angle, bool visible) {
    marker_->visible = visible;
    marker_->angle = angle;
    marker_->position = turnedAbout(item.centre(), markerSize, angle);
}

void MapBoard::showCaption(const std::string& text, bool visible) {
    caption_->visible = visible;
    caption_->setText(text);
    caption_->position = onPanel({captionX - textExtent(*caption_) / 2, captionY + captionHeight});
}

void MapBoard::hit(const MapItem& item, float angle) {
    GuiSprite* hole = squareSprite(*way_, "maps/bullet", turnedAbout(item.centre(), holeSize, angle), holeSize);
    hole->angle = angle;
}
