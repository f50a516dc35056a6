#include "render/GpuPasses.h"

namespace Zelkor {

namespace {

GpuPasses* measuring = nullptr;

} // namespace

GpuPasses::GpuPasses() {
    measuring = this;
}

GpuPasses::~GpuPasses() {
    if (measuring == this) measuring = nullptr;
}

GpuTimer& GpuPasses::timer(const char* name) {
    for (Entry& entry : entries_)
        if (entry.name == name) return entry.timer;
    Entry& added = entries_.emplace_back();
    added.name = name;
    return added.timer;
}

std::vector<GpuPasses::Time> GpuPasses::take() {
    std::vector<Time> times;
    for (Entry& entry : entries_)
        times.push_back({entry.name, entry.timer.takeMicroseconds()});
    return times;
}

GpuPass::GpuPass(const char* name) : timer_(measuring ? &measuring->timer(name) : nullptr) {
    if (timer_) timer_->begin();
}

GpuPass::~GpuPass() {
    if (timer_) timer_->end();
}

} // namespace Zelkor
