// Shows the program's real window, presses ten keys a second through the controller and tells how long the
// frames that light them take. Output, one JSON object a line:
//   {"name":"keys light up","frames":200,"frame_us":[...],"shown_us":[...]}
//   {"name":"nothing changes","frames":200,"frame_us":[...],"shown_us":[...]}
// A frame is counted from the beginning of its synchronisation to its being handed to the window system, and
// shown from the press, or from the asking for the frame.
// Usage: frame_player PRESSES

#include "Platform/Qt/QtMainActor.h"
#include "Programs/tavro/AppMainComposition.h"

#include <QGuiApplication>

#include <nlohmann/json.hpp>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tavro;
using Json = nlohmann::ordered_json;
using std::chrono::milliseconds;

std::int64_t now() {
    return std::chrono::duration_cast<std::chrono::microseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// The frames of a window. They may be made in another thread; everything else is the main thread's.
class FrameClock {
public:
    explicit FrameClock(QQuickWindow& window) {
        QObject::connect(
            &window, &QQuickWindow::beforeSynchronizing, &window, [this] { begin_ = now(); },
            Qt::DirectConnection);
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &window, [this] { end_ = now(); }, Qt::DirectConnection);
    }

    /// The latest frame: when it began and ended.
    [[nodiscard]] std::int64_t begin() const { return begin_; }

    [[nodiscard]] std::int64_t end() const { return end_; }

private:
    std::atomic<std::int64_t> begin_ = 0;
    std::atomic<std::int64_t> end_ = 0;
};

/// Does something ten times a second, and notes the frame that follows.
class Series {
public:
    Series(std::string name, QQuickWindow& window, MainActor& actor, std::function<void(bool isDown)> act)
        : name_(std::move(name)), window_(window), clock_(window), actor_(actor), act_(std::move(act)) {}

    void start(unsigned count, std::function<void()> done) {
        left_ = count;
        done_ = std::move(done);
        press();
    }

private:
    void press() {
        asked_ = now();
        act_(true);
        window_.update();
        task_ = actor_.after(milliseconds(60), [this] { release(); });
    }

    void release() {
        if (clock_.begin() >= asked_ && clock_.end() >= clock_.begin()) {
            frames_.push_back(clock_.end() - clock_.begin());
            shown_.push_back(clock_.end() - asked_);
        }
        act_(false);
        task_ = actor_.after(milliseconds(40), [this] { next(); });
    }

    void next() {
        if (--left_ > 0) {
            press();
            return;
        }
        std::cout << Json{{"name", name_},
                          {"frames", frames_.size()},
                          {"frame_us", frames_},
                          {"shown_us", shown_}}
                  << std::endl;
        done_();
    }

    std::string name_;
    QQuickWindow& window_;
    FrameClock clock_;
    MainActor& actor_;
    std::function<void(bool)> act_;
    std::function<void()> done_;
    ScheduledTask task_;
    unsigned left_ = 0;
    std::int64_t asked_ = 0;
    std::vector<std::int64_t> frames_;
    std::vector<std::int64_t> shown_;
};

int play(unsigned presses) {
    QtMainActor mainActor;
    const auto adapters = AppMainAdapters::headless();
    AppMainComposition program(adapters, mainActor);
    PerformanceState chords;
    chords.scaleName = "Major";
    chords.chordMode = ChordMode::seventh;
    chords.voicingComplexity = 70;
    program.controller.loadState(chords);
    if (!program.window.load()) {
        std::cerr << "frame_player: the window could not be made\n";
        return 1;
    }
    constexpr std::array keys{U'a', U's', U'd', U'f', U'g', U'h', U'j', U'k'};
    std::size_t pressed = 0;
    auto& window = *program.window.window();
    Series lights("keys light up", window, mainActor, [&](bool isDown) {
        const auto key = keys.at(pressed % keys.size());
        if (isDown) {
            program.controller.handleKeyDown(key);
        } else {
            program.controller.handleKeyUp(key);
            ++pressed;
        }
    });
    Series nothing("nothing changes", window, mainActor, [](bool) {});
    const auto begin = mainActor.after(milliseconds(1000), [&] {
        lights.start(presses, [&] { nothing.start(presses, &QGuiApplication::quit); });
    });
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::cerr << "usage: frame_player PRESSES\n";
        return 2;
    }
    return play(static_cast<unsigned>(std::stoul(argv[1])));
}
