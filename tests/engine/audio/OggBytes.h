// A short Ogg Vorbis file, made on the spot.
#pragma once

#include <vorbis/vorbisenc.h>

#include <cmath>
#include <string>

// Stereo, 44100 samples a second: a tone of that frequency and its octave.
inline std::string oggBytes(int samples, double frequency = 440, int channels = 2) {
    std::string file;
    vorbis_info info;
    vorbis_comment comment;
    vorbis_dsp_state state;
    vorbis_block block;
    ogg_stream_state stream;
    ogg_page page;
    ogg_packet packets[3];
    vorbis_info_init(&info);
    vorbis_encode_init_vbr(&info, channels, 44100, 0.1f);
    vorbis_comment_init(&comment);
    vorbis_analysis_init(&state, &info);
    vorbis_block_init(&state, &block);
    ogg_stream_init(&stream, 1);
    const auto append = [&] {
        file.append(reinterpret_cast<char*>(page.header), static_cast<std::size_t>(page.header_len));
        file.append(reinterpret_cast<char*>(page.body), static_cast<std::size_t>(page.body_len));
    };
    vorbis_analysis_headerout(&state, &comment, &packets[0], &packets[1], &packets[2]);
    for (ogg_packet& packet : packets)
        ogg_stream_packetin(&stream, &packet);
    while (ogg_stream_flush(&stream, &page))
        append();
    for (int done = 0, last = 0; !last; done += 1024) {
        const int count = std::max(0, std::min(1024, samples - done));
        last = count == 0;
        float** to = count > 0 ? vorbis_analysis_buffer(&state, count) : nullptr;
        for (int i = 0; i < count; ++i)
            for (int channel = 0; channel < channels; ++channel)
                to[channel][i] = 0.5f * static_cast<float>(std::sin((done + i) * frequency * (channel + 1) *
                                                                    2 * M_PI / 44100));
        vorbis_analysis_wrote(&state, count);
        while (vorbis_analysis_blockout(&state, &block) == 1) {
            vorbis_analysis(&block, nullptr);
            vorbis_bitrate_addblock(&block);
            while (vorbis_bitrate_flushpacket(&state, &packets[0])) {
                ogg_stream_packetin(&stream, &packets[0]);
                while (ogg_stream_pageout(&stream, &page))
                    append();
            }
        }
    }
    ogg_stream_clear(&stream);
    vorbis_block_clear(&block);
    vorbis_dsp_clear(&state);
    vorbis_comment_clear(&comment);
    vorbis_info_clear(&info);
    return file;
}
