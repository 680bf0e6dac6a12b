#include "Platform/Linux/Alsa/SequencerQueue.h"

#include <algorithm>
#include <utility>

#include <poll.h>

namespace tavro::alsa {

namespace {

/// How often the queue looks for what is due: the sequencer takes no more.
constexpr unsigned ticksEachSecond = 6250;

/// Events are due at the first tick after their time. Asked for so much earlier, they come around it.
constexpr EventQueue::Time halfATick =
    std::chrono::nanoseconds(std::chrono::seconds(1)) / ticksEachSecond / 2;

/// Room for as many events as can wait, each with its mark, and for others behind them.
constexpr std::size_t outputRoom = 1000;

/// Room for all their marks while the main thread does not look.
constexpr std::size_t inputRoom = 600;

} // namespace

SequencerQueue::SequencerQueue(snd_seq_t& sequencer, std::function<void()> read)
    : sequencer_(sequencer), read_(std::move(read)) {}

void SequencerQueue::open(int port) {
    port_ = static_cast<unsigned char>(port);
    if (!makeQueue()) {
        queue_ = -1;
    }
}

bool SequencerQueue::makeQueue() {
    queue_ = snd_seq_alloc_named_queue(&sequencer_, "TAVRO");
    if (queue_ < 0) {
        return false;
    }
    chooseTimer();
    snd_seq_client_info_t* client = nullptr;
    snd_seq_client_info_alloca(&client);
    if (snd_seq_get_client_info(&sequencer_, client) < 0) {
        return false;
    }
    // What a receiver has no room for is told to the sender, who has no port that takes it, and counted.
    snd_seq_client_info_set_error_bounce(client, 1);
    return snd_seq_set_client_info(&sequencer_, client) >= 0 &&
           snd_seq_set_client_pool_output(&sequencer_, outputRoom) >= 0 &&
           snd_seq_set_client_pool_input(&sequencer_, inputRoom) >= 0;
}

void SequencerQueue::chooseTimer() const {
    snd_timer_id_t* precise = nullptr;
    snd_timer_id_alloca(&precise);
    snd_timer_id_set_class(precise, SND_TIMER_CLASS_GLOBAL);
    snd_timer_id_set_sclass(precise, SND_TIMER_SCLASS_NONE);
    snd_timer_id_set_card(precise, -1);
    snd_timer_id_set_device(precise, SND_TIMER_GLOBAL_HRTIMER);
    snd_timer_id_set_subdevice(precise, 0);
    snd_seq_queue_timer_t* timer = nullptr;
    snd_seq_queue_timer_alloca(&timer);
    snd_seq_queue_timer_set_type(timer, SND_SEQ_TIMER_ALSA);
    snd_seq_queue_timer_set_id(timer, precise);
    snd_seq_queue_timer_set_resolution(timer, ticksEachSecond);
    // A kernel without it takes the one it has instead.
    snd_seq_set_queue_timer(&sequencer_, queue_, timer);
}

std::optional<std::uint32_t> SequencerQueue::markOf(const snd_seq_event_t& event) const {
    const auto isMark = event.type == SND_SEQ_EVENT_ECHO && event.dest.port == port_ &&
                        event.source.client == snd_seq_client_id(&sequencer_);
    return isMark ? std::optional(event.data.raw32.d[0]) : std::nullopt;
}

std::uint64_t SequencerQueue::lost() const {
    snd_seq_client_info_t* client = nullptr;
    snd_seq_client_info_alloca(&client);
    return snd_seq_get_client_info(&sequencer_, client) < 0
               ? 0
               : static_cast<std::uint64_t>(snd_seq_client_info_get_event_lost(client));
}

bool SequencerQueue::start() {
    if (queue_ < 0) {
        return false;
    }
    start_ = Clock::now();
    control(SND_SEQ_EVENT_START);
    return isRunning();
}

void SequencerQueue::stop() {
    control(SND_SEQ_EVENT_STOP);
}

EventQueue::Time SequencerQueue::now() const {
    // The queue's own clock stands still between its ticks.
    return Clock::now() - start_;
}

bool SequencerQueue::add(snd_seq_event_t& event, Time time, Tag tag) {
    const auto asked = std::max(time - halfATick, Time::zero());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(asked);
    const snd_seq_real_time_t real{.tv_sec = static_cast<unsigned>(seconds.count()),
                                   .tv_nsec = static_cast<unsigned>((asked - seconds).count())};
    snd_seq_ev_schedule_real(&event, static_cast<unsigned char>(queue_), 0, &real);
    snd_seq_ev_set_tag(&event, tag);
    return snd_seq_event_output_direct(&sequencer_, &event) >= 0;
}

bool SequencerQueue::addMark(std::uint32_t number, Time time, Tag tag) {
    snd_seq_event_t event;
    snd_seq_ev_clear(&event);
    snd_seq_ev_set_fixed(&event);
    event.type = SND_SEQ_EVENT_ECHO;
    event.data.raw32.d[0] = number;
    snd_seq_ev_set_source(&event, port_);
    snd_seq_ev_set_dest(&event, static_cast<unsigned char>(snd_seq_client_id(&sequencer_)), port_);
    return add(event, time, tag);
}

void SequencerQueue::remove(Tag tag) {
    snd_seq_remove_events_t* condition = nullptr;
    snd_seq_remove_events_alloca(&condition);
    snd_seq_remove_events_set_condition(condition, SND_SEQ_REMOVE_OUTPUT | SND_SEQ_REMOVE_TAG_MATCH);
    snd_seq_remove_events_set_tag(condition, tag);
    snd_seq_remove_events(&sequencer_, condition);
}

void SequencerQueue::await() {
    constexpr auto milliseconds = 10;
    pollfd descriptor{};
    snd_seq_poll_descriptors(&sequencer_, &descriptor, 1, POLLIN);
    poll(&descriptor, 1, milliseconds);
    read();
}

void SequencerQueue::control(snd_seq_event_type_t type) const {
    snd_seq_event_t event;
    snd_seq_ev_clear(&event);
    snd_seq_ev_set_queue_control(&event, type, static_cast<unsigned char>(queue_), 0);
    snd_seq_ev_set_source(&event, port_);
    snd_seq_ev_set_direct(&event);
    snd_seq_event_output_direct(&sequencer_, &event);
}

bool SequencerQueue::isRunning() const {
    snd_seq_queue_status_t* status = nullptr;
    snd_seq_queue_status_alloca(&status);
    return snd_seq_get_queue_status(&sequencer_, queue_, status) >= 0 &&
           snd_seq_queue_status_get_status(status) != 0;
}

} // namespace tavro::alsa
