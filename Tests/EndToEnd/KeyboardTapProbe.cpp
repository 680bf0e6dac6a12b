// Drives the keyboard tap of X11 by commands on standard input. The first argument is the program that guards
// the repeats. Everything that the tap tells is written as one JSON object a line:
//   {"made":true}                      at the start: whether the tap could be made
//   {"down":0,"modifiers":8,"isAutorepeat":false,"isHotkey":false,"isSwallowed":true}    likewise "up"
//   {"taken":[[0,0],[0,8]]}            key codes and modifiers that another program has
//   {"ended":"emergencyExit"}          or "lost"
// Key codes are the Mac's virtual ones, modifiers are the bits of HotkeyModifiers.
//   play 0|1        whether the 45 keys of the QWERTY layout are wanted
//   hotkey K M      the key that toggles this
//   front 0|1       in front, nothing is wanted
//   refuse 0|1      what is wanted is passed nevertheless when it comes
//   enable 0|1      switches the tap
//   churn MS        changes its mind about being in front without a pause, for so long; {"churned":true}
//   settle          has all verdicts asked anew; {"settled":true} once that is obeyed
//   dispose         {"disposed":true}
//   make            {"made":true}

#include "CommandLines.h"
#include "ScriptedTapClient.h"

#include "Platform/Linux/X11/KeyboardTapAdapter.h"

#include <QCoreApplication>

#include <chrono>
#include <iostream>
#include <sstream>
#include <string>

namespace {

void print(const std::string& name, bool value) {
    std::cout << "{\"" + name + "\":" + (value ? "true" : "false") + "}\n" << std::flush;
}

class Probe {
public:
    explicit Probe(const std::string& guardProgram)
        : guard_(guardProgram, qgetenv("DISPLAY").toStdString()), tap_(guard_) {
        make();
    }

    /// False at a line that means nothing.
    bool obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        std::int64_t first = 0;
        if (command == "settle") {
            settle();
        } else if (command == "dispose") {
            tap_.dispose();
            print("disposed", true);
        } else if (command == "make") {
            make();
        } else if (!(words >> first)) {
            return false;
        } else if (command == "play") {
            client_.setPlaying(first != 0);
        } else if (command == "front") {
            client_.setInFront(first != 0);
        } else if (command == "refuse") {
            client_.setRefusing(first != 0);
        } else if (command == "enable") {
            tap_.enable(first != 0);
        } else if (command == "churn") {
            churn(std::chrono::milliseconds(first));
        } else if (std::int64_t second = 0; command == "hotkey" && words >> second) {
            client_.setHotkey(first, tavro::HotkeyModifiers(second));
        } else {
            return false;
        }
        return true;
    }

private:
    void make() { print("made", tap_.create(client_)); }

    void settle() {
        // Once it asks for the second time, all that followed from the first is done.
        auto isSettled = true;
        for (auto round = 0; round < 2 && isSettled; ++round) {
            const auto before = client_.rounds();
            tap_.updateVerdicts();
            isSettled = client_.awaitQuestions(before);
        }
        print("settled", isSettled);
    }

    void churn(std::chrono::milliseconds time) {
        const auto end = std::chrono::steady_clock::now() + time;
        auto isInFront = false;
        while (isInFront || std::chrono::steady_clock::now() < end) {
            isInFront = !isInFront;
            client_.setInFront(isInFront);
            const auto before = client_.rounds();
            tap_.updateVerdicts();
            static_cast<void>(client_.awaitQuestions(before));
        }
        print("churned", true);
    }

    ScriptedTapClient client_;
    tavro::guard::GuardProcess guard_;
    tavro::x11::KeyboardTapAdapter tap_;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc != 2) {
        std::cerr << "KeyboardTapProbe: one argument, the guard's program, is needed\n";
        return 2;
    }
    Probe probe(argv[1]);
    return runCommandLines([&probe](const std::string& line) {
        const auto isKnown = probe.obey(line);
        if (!isKnown) {
            std::cerr << "KeyboardTapProbe: " << line << " is not known here\n";
        }
        return isKnown;
    });
}
