#include "platform/pulse/pulse_player.h"

#include <pulse/pulseaudio.h>

#include <cstdint>

#include "platform/pulse/sound_file.h"

namespace ostrel {
namespace {

template <auto release>
struct Release {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};

using Properties = std::unique_ptr<pa_proplist, Release<pa_proplist_free>>;
using Operation = std::unique_ptr<pa_operation, Release<pa_operation_unref>>;

// How far ahead the server mixes. More delays the beginning of a sound where the server has been
// playing others.
constexpr pa_usec_t kAheadUsec = 40'000;

constexpr std::uint32_t kServersChoice = UINT32_MAX;

// Desktops let people set how loud the events are.
Properties eventProperties() {
    Properties properties(pa_proplist_new());
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_ID, "ostrel");
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_ICON_NAME, "ostrel");
    pa_proplist_sets(properties.get(), PA_PROP_MEDIA_ROLE, "event");
    return properties;
}

}  // namespace

struct PulsePlayer::Pulse {
    std::unique_ptr<pa_mainloop, Release<pa_mainloop_free>> loop{pa_mainloop_new()};
    std::unique_ptr<pa_context, Release<pa_context_unref>> context;
    std::unique_ptr<pa_stream, Release<pa_stream_unref>> stream;

    // Handles what the server says next; false once there is no server to talk to.
    bool turn() {
        return pa_mainloop_iterate(loop.get(), 1, nullptr) >= 0 &&
               PA_CONTEXT_IS_GOOD(pa_context_get_state(context.get())) != 0;
    }

    bool connect() {
        context.reset(pa_context_new_with_proplist(pa_mainloop_get_api(loop.get()), "Ostrel",
                                                   eventProperties().get()));
        if (!context ||
            pa_context_connect(context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
            return false;
        }
        while (pa_context_get_state(context.get()) != PA_CONTEXT_READY) {
            if (!turn()) {
                return false;
            }
        }
        return true;
    }

    bool open(const pa_sample_spec& spec) {
        stream.reset(pa_stream_new_with_proplist(context.get(), "Chime", &spec, nullptr,
                                                 eventProperties().get()));
        const pa_buffer_attr buffer{kServersChoice,
                                    static_cast<std::uint32_t>(pa_usec_to_bytes(kAheadUsec, &spec)),
                                    kServersChoice, kServersChoice, kServersChoice};
        if (!stream || pa_stream_connect_playback(stream.get(), nullptr, &buffer,
                                                  PA_STREAM_ADJUST_LATENCY, nullptr, nullptr) < 0) {
            return false;
        }
        while (pa_stream_get_state(stream.get()) != PA_STREAM_READY) {
            if (!turn() || PA_STREAM_IS_GOOD(pa_stream_get_state(stream.get())) == 0) {
                return false;
            }
        }
        return true;
    }
};

PulsePlayer::PulsePlayer() : pulse_(std::make_unique<Pulse>()) {}

PulsePlayer::~PulsePlayer() {
    if (pulse_->stream) {
        pa_stream_disconnect(pulse_->stream.get());
    }
    if (pulse_->context) {
        pa_context_disconnect(pulse_->context.get());
    }
}

bool PulsePlayer::begin(const SoundFile& sound) {
    const pa_sample_spec spec{PA_SAMPLE_S16NE, sound.rate, sound.channels};
    // The server takes all of it at once, whatever it wants to have ahead.
    return pulse_->connect() && pulse_->open(spec) &&
           pa_stream_write(pulse_->stream.get(), sound.samples.data(),
                           sound.samples.size() * sizeof(std::int16_t), nullptr, 0,
                           PA_SEEK_RELATIVE) == 0;
}

bool PulsePlayer::finish() {
    bool heard = false;
    const Operation drain(pa_stream_drain(
        pulse_->stream.get(),
        [](pa_stream*, int success, void* result) { *static_cast<bool*>(result) = success != 0; },
        &heard));
    while (drain && pa_operation_get_state(drain.get()) == PA_OPERATION_RUNNING) {
        if (!pulse_->turn()) {
            break;
        }
    }
    return heard;
}

}  // namespace ostrel
