#include "render/GpuTimer.h"

#include "render/GlApi.h"

namespace Zelkor {

bool GpuTimer::supported() {
    return GLEW_ARB_timer_query && glQueryCounter && glGetQueryObjectui64v;
}

GpuTimer::~GpuTimer() {
    for (const Query& query : queries_)
        if (query.begin != 0) {
            glDeleteQueries(1, &query.begin);
            glDeleteQueries(1, &query.end);
        }
}

void GpuTimer::begin() {
    if (!supported() || running_ || pending_ == depth) return;
    Query& query = queries_[(oldest_ + pending_) % depth];
    if (query.begin == 0) {
        glGenQueries(1, &query.begin);
        glGenQueries(1, &query.end);
    }
    glQueryCounter(query.begin, GL_TIMESTAMP);
    running_ = true;
}

void GpuTimer::end() {
    if (!running_) return;
    glQueryCounter(queries_[(oldest_ + pending_) % depth].end, GL_TIMESTAMP);
    ++pending_;
    running_ = false;
}

std::optional<double> GpuTimer::takeMicroseconds() {
    if (pending_ == 0) return std::nullopt;
    const Query& query = queries_[oldest_];
    GLint ready = 0;
    glGetQueryObjectiv(query.end, GL_QUERY_RESULT_AVAILABLE, &ready);
    if (!ready) return std::nullopt;
    GLuint64 from = 0, to = 0;
    glGetQueryObjectui64v(query.begin, GL_QUERY_RESULT, &from);
    glGetQueryObjectui64v(query.end, GL_QUERY_RESULT, &to);
    oldest_ = (oldest_ + 1) % depth;
    --pending_;
    return static_cast<double>(to - from) / 1000;
}

} // namespace Zelkor
