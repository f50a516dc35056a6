#include "render/GuiDrawList.h"

#include "core/EngineManagers.h"
#include "core/ProfileSections.h"
#include "gui/GuiShapes.h"
#include "gui/GuiTileArray.h"
#include "gui/GuiWorkspace.h"
#include "render/MaterialManager.h"
#include "render/Renderer.h"

#include <algorithm>
#include <cstring>

namespace Zelkor {

namespace {

constexpr int opaqueMode = 0, alphaMode = 3, alphaAddMode = 4;

// How far beyond the view cells of tile arrays are still listed.
constexpr float screenMargin = 0.1f, sceneMargin = 0.2f;

// A quad is spanned by two vectors from its top left corner.
void placeQuad(float* quad, float x, float y, const Vec3& right, const Vec3& down) {
    const float corners[8] = {x,          y,          x + right.x,          y + right.y,
                              x + down.x, y + down.y, x + right.x + down.x, y + right.y + down.y};
    std::memcpy(quad, corners, sizeof corners);
}

Vec3 rotated(const Quat& q, const Vec3& v) {
    if (q.w == 1) return v; // nearly everything stands upright
    Vec3 out;
    return quatRotate(out, q, v);
}

} // namespace

struct GuiDrawList::Place {
    Vec3 position;
    float angle = 0;
    Quat rotation; // by angle
    Vec4 colour{1, 1, 1, 1};

    Place of(const GuiObject& object) const {
        Place inner;
        inner.position = position + rotated(rotation, object.position);
        inner.angle = angle + object.angle;
        inner.rotation = inner.angle == 0 ? Quat{} : quatFromAxisAngle(inner.angle, {0, 0, 1});
        inner.colour = {colour.x * object.colour.x, colour.y * object.colour.y, colour.z * object.colour.z,
                        colour.w * object.colour.w};
        return inner;
    }
};

bool drawnInPass(GuiKind kind, int drawMode, float opacity, int pass) {
    const bool opaque = opacity >= 1;
    if (pass == 0)
        return opaque && (drawMode == opaqueMode ||
                          (drawMode == alphaMode && kind != GuiKind::bitmap && kind != GuiKind::text));
    return drawMode != opaqueMode && !(kind == GuiKind::rect && opaque && drawMode == alphaMode);
}

// --- Listing ---------------------------------------------------------------------------------------------

void GuiDrawList::clear() {
    items_.clear();
    order_.clear();
    appended_.clear();
    pool_.clear();
    items_.reserve(guiItemCapacity);
    pool_.reserve(guiVertexCapacity);
    workspace_ = nullptr;
}

void GuiDrawList::updateGuiList(GuiWorkspace& workspace, int pass) {
    ProfileSection section(ProfileId::updateGuiList);
    workspace_ = &workspace;
    pass_ = pass;
    if (workspace.root.visible) addChildren(*workspace.root.children(), Place{}.of(workspace.root));
    sortAppended(pass != 0);
}

void GuiDrawList::append(const GuiDrawItem& item) {
    if (items_.size() >= guiItemCapacity) return;
    appended_.push_back({item.depth, static_cast<int>(items_.size())});
    items_.push_back(item);
}

// The same as adding them one by one, at once: menus have many objects of few depths.
void GuiDrawList::sortAppended(bool frontToBack) {
    ProfileSection section(ProfileId::addToGuiList);
    const auto before = [frontToBack](const Appended& a, const Appended& b) {
        return frontToBack ? a.depth < b.depth : a.depth > b.depth;
    };
    if (!std::is_sorted(appended_.begin(), appended_.end(), before))
        std::stable_sort(appended_.begin(), appended_.end(), before);
    for (const Appended& each : appended_)
        order_.push_back(each.index);
    appended_.clear();
}

void GuiDrawList::addChildren(const GuiChildren& children, const Place& place) {
    for (const auto& child : children)
        if (child->visible) addObject(*child, place.of(*child));
}

void GuiDrawList::addObject(GuiObject& object, const Place& place) {
    if (!drawnInPass(object.kind, object.drawMode, place.colour.w, pass_)) return;
    if (object.kind == GuiKind::panel) {
        if (const GuiChildren* children = object.children()) addChildren(*children, place);
        return;
    }
    const int mode = object.drawMode & 0xff;
    if (place.colour.w <= 0 && (mode == alphaMode || mode == alphaAddMode)) return; // nothing to be seen
    if (items_.size() >= guiItemCapacity) return;
    if (object.kind == GuiKind::text)
        addText(static_cast<const GuiText&>(object), place);
    else if (object.kind == GuiKind::tileArray)
        addTiles(static_cast<GuiTileArray&>(object), place);
    else
        addQuad(object, place);
}

GuiDrawItem GuiDrawList::itemFor(const GuiObject& object, const Place& place) const {
    GuiDrawItem item;
    item.texture = object.textureHandle();
    item.drawKey = static_cast<unsigned>(object.drawMode);
    item.colour = place.colour;
    item.filtered = object.drawFlag != 0;
    // A screen's view reaches from 1 down to -1000; its objects keep their order by z within that.
    item.depth = workspace_->inScene() ? place.position.z : place.position.z * 0.1f - 100;
    return item;
}

// Without extent, or beyond the edges of a screen.
bool GuiDrawList::hiddenQuad(const float* quad) const {
    Box box{quad[0], quad[1], quad[0], quad[1]};
    for (int corner = 1; corner < 4; ++corner) {
        box.left = std::min(box.left, quad[2 * corner]);
        box.right = std::max(box.right, quad[2 * corner]);
        box.top = std::min(box.top, quad[2 * corner + 1]);
        box.bottom = std::max(box.bottom, quad[2 * corner + 1]);
    }
    if (workspace_->inScene()) return false;
    const GuiPanel& root = workspace_->root;
    const Box screen{root.position.x, root.position.y, root.position.x + root.width,
                     root.position.y + root.height};
    return !overlap(box, screen);
}

void GuiDrawList::addQuad(GuiObject& object, const Place& place) {
    if (object.width == 0 || object.height == 0) return;
    GuiDrawItem item = itemFor(object, place);
    if (object.kind == GuiKind::rect && pass_ == 0) item.drawKey = opaqueMode;
    placeQuad(item.quad, place.position.x, place.position.y, rotated(place.rotation, {object.width, 0, 0}),
              rotated(place.rotation, {0, object.height, 0}));
    if (hiddenQuad(item.quad)) return;
    if (const GuiCorners* corners = object.textureData())
        std::memcpy(item.quad + 8, corners->data(), sizeof *corners);
    append(item);
}

// Room for wanted quads or as many as are left. Null when there is none.
float* GuiDrawList::takeQuads(GuiDrawItem& item, int wanted) {
    ProfileSection section(ProfileId::allocateGuiTextData);
    if (wanted == 1) return item.quad;
    const int left = (guiVertexCapacity - static_cast<int>(pool_.size())) / guiQuadFloats;
    item.quadCount = std::min(wanted, left);
    if (item.quadCount <= 0) return nullptr;
    item.pooled = static_cast<int>(pool_.size());
    pool_.resize(pool_.size() + static_cast<std::size_t>(item.quadCount * guiQuadFloats));
    return pool_.data() + item.pooled;
}

// Gives back what was not used.
void GuiDrawList::finishQuads(GuiDrawItem& item, int used) {
    item.quadCount = used;
    if (item.pooled >= 0) pool_.resize(static_cast<std::size_t>(item.pooled + used * guiQuadFloats));
    if (used > 0) append(item);
}

void GuiDrawList::addText(const GuiText& text, const Place& place) {
    const Font* font = engineManagers()->materialManager->font(text.resourceHandle());
    const std::string& characters = text.characters();
    if (!font || characters.empty()) return;
    ProfileSection section(ProfileId::processGuiText);
    GuiDrawItem item = itemFor(text, place);
    item.texture = font->texture;
    float* quad = takeQuads(item, static_cast<int>(std::min<std::size_t>(characters.size(), guiVertexCapacity)));
    if (!quad) return;
    const Vec3 right = rotated(place.rotation, {text.textParam() * text.charHeight(), 0, 0});
    const Vec3 down = rotated(place.rotation, {0, text.textParam(), 0});
    Vec3 pen = place.position;
    const int room = item.quadCount;
    int line = 0, used = 0;
    for (const char c : characters) {
        if (c == '\n') {
            ++line;
            pen = place.position + static_cast<float>(line) * down;
            continue;
        }
        if (used == room) break;
        const GlyphRect& glyph = font->glyph(c);
        const Vec3 across = glyph.aspect() * right;
        placeQuad(quad, pen.x, pen.y, across, down);
        const GuiCorners corners = cornersOf(glyph.left, glyph.top, glyph.right, glyph.bottom);
        std::memcpy(quad + 8, corners.data(), sizeof corners);
        pen += across;
        quad += guiQuadFloats;
        ++used;
    }
    finishQuads(item, used);
}

void GuiDrawList::addTiles(GuiTileArray& tiles, const Place& place) {
    const auto onWorkspace = [&](const Vec3& local) { return place.position + rotated(place.rotation, local); };
    if (workspace_->inScene()) {
        const auto& scene = static_cast<const GuiSceneWorkspace&>(*workspace_);
        const Camera& camera = engineManagers()->renderer->currentCamera;
        tiles.findVisibleCells(
            [&](const Vec3& local) {
                const Vec3 seen = camera.project(scene.position + rotated(scene.rotation, onWorkspace(local)));
                return Vec2{seen.x, seen.y};
            },
            sceneMargin);
    } else {
        tiles.findVisibleCells(
            [&](const Vec3& local) {
                const Vec3 at = onWorkspace(local);
                return Vec2{at.x, at.y};
            },
            screenMargin);
    }
    if (tiles.visibleCells().empty()) return;

    GuiDrawItem item = itemFor(tiles, place);
    float* quad = takeQuads(item, static_cast<int>(tiles.visibleCells().size()));
    if (!quad) return;
    const Vec3 right = rotated(place.rotation, 1 / static_cast<float>(tiles.columns()) * tiles.axisX);
    const Vec3 down = rotated(place.rotation, 1 / static_cast<float>(tiles.rows()) * tiles.axisY);
    for (int i = 0; i < item.quadCount; ++i, quad += guiQuadFloats) {
        const int cell = tiles.visibleCells()[static_cast<std::size_t>(i)];
        const int column = cell % tiles.columns(), row = cell / tiles.columns();
        const Vec3 corner = onWorkspace(tiles.cellCentre(column, row)) - 0.5f * (right + down);
        placeQuad(quad, corner.x, corner.y, right, down);
        const GuiCorners corners = tiles.tileCorners(tiles.tile(column, row));
        std::memcpy(quad + 8, corners.data(), sizeof corners);
    }
    finishQuads(item, item.quadCount);
}

void GuiDrawList::addToGuiList(const GuiDrawItem& item, bool frontToBack) {
    ProfileSection section(ProfileId::addToGuiList);
    if (items_.size() >= guiItemCapacity) return;
    const int index = static_cast<int>(items_.size());
    items_.push_back(item);
    const auto place =
        std::upper_bound(order_.begin(), order_.end(), item.depth, [&](float depth, int other) {
            const float otherDepth = items_[static_cast<std::size_t>(other)].depth;
            return frontToBack ? depth < otherDepth : depth > otherDepth;
        });
    order_.insert(place, index);
}

std::span<const float> GuiDrawList::quads(const GuiDrawItem& item) const {
    const auto count = static_cast<std::size_t>(item.quadCount * guiQuadFloats);
    return {item.pooled < 0 ? item.quad : pool_.data() + item.pooled, count};
}

// --- Gathering -------------------------------------------------------------------------------------------

bool GuiDrawList::overlap(const Box& a, const Box& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

GuiDrawList::Box GuiDrawList::boxOf(const GuiDrawItem& item) const {
    const std::span<const float> all = quads(item);
    Box box{all[0], all[1], all[0], all[1]};
    for (std::size_t quad = 0; quad < all.size(); quad += guiQuadFloats)
        for (std::size_t corner = quad; corner < quad + 8; corner += 2) {
            box.left = std::min(box.left, all[corner]);
            box.right = std::max(box.right, all[corner]);
            box.top = std::min(box.top, all[corner + 1]);
            box.bottom = std::max(box.bottom, all[corner + 1]);
        }
    return box;
}

bool GuiDrawList::covered(const Group& group, const Box& box) const {
    if (!overlap(group.box, box)) return false;
    for (int i = group.first; i >= 0; i = next_[static_cast<std::size_t>(i)])
        if (overlap(boxes_[static_cast<std::size_t>(i)], box)) return true;
    return false;
}

// The group that the item can join, -1 for none.
int GuiDrawList::groupFor(const GuiDrawItem& item, const Box& box) const {
    constexpr int lookBack = 8;
    const int last = static_cast<int>(groups_.size()) - 1;
    const int stop = workspace_ && !workspace_->inScene() ? std::max(last - lookBack, 0) : std::max(last, 0);
    for (int i = last; i >= stop; --i) {
        const Group& group = groups_[static_cast<std::size_t>(i)];
        const GuiDrawItem& other = this->item(group.first);
        if (other.drawKey == item.drawKey && other.texture == item.texture && other.filtered == item.filtered)
            return i;
        if (covered(group, box)) return -1;
    }
    return -1;
}

void GuiDrawList::gather(bool tint) {
    groups_.clear();
    batches_.clear();
    vertices_.clear();
    next_.assign(items_.size(), -1);
    boxes_.resize(items_.size());
    for (const int index : order_) {
        const GuiDrawItem& added = item(index);
        const Box box = boxes_[static_cast<std::size_t>(index)] = boxOf(added);
        const int joined = groupFor(added, box);
        if (joined < 0) {
            groups_.push_back({index, index, box});
            continue;
        }
        Group& group = groups_[static_cast<std::size_t>(joined)];
        next_[static_cast<std::size_t>(group.last)] = index;
        group.last = index;
        group.box = {std::min(group.box.left, box.left), std::min(group.box.top, box.top),
                     std::max(group.box.right, box.right), std::max(group.box.bottom, box.bottom)};
    }
    for (const Group& group : groups_) {
        const GuiDrawItem& first = item(group.first);
        const int from = static_cast<int>(vertices_.size());
        for (int i = group.first; i >= 0; i = next_[static_cast<std::size_t>(i)])
            appendVertices(item(i), tint);
        batches_.push_back({first.texture, first.drawKey, first.filtered, from,
                            static_cast<int>(vertices_.size()) - from});
    }
}

void GuiDrawList::appendVertices(const GuiDrawItem& item, bool tint) {
    Vec4 colour = item.colour;
    if (tint && (item.drawKey & 0xff) > 2) {
        colour.x *= pencilTint.x;
        colour.y *= pencilTint.y;
        colour.z *= pencilTint.z;
    }
    const auto byte = [](float share) { return static_cast<std::uint8_t>(clamp(share, 0, 1) * 255 + 0.5f); };
    GuiVertex vertex{0, 0, item.depth, 0, 0,
                     {byte(colour.x), byte(colour.y), byte(colour.z), byte(colour.w)}};
    const std::span<const float> all = quads(item);
    constexpr std::size_t around[4] = {0, 1, 3, 2};
    for (std::size_t quad = 0; quad < all.size(); quad += guiQuadFloats)
        for (const std::size_t corner : around) {
            vertex.x = all[quad + 2 * corner];
            vertex.y = all[quad + 2 * corner + 1];
            vertex.u = all[quad + 8 + 2 * corner];
            vertex.v = all[quad + 9 + 2 * corner];
            vertices_.push_back(vertex);
        }
}

} // namespace Zelkor
