#pragma once

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <string>

#include <unistd.h>

/// Hands the lines of standard input to `obey`, a callable from text to bool, while the event loop runs. The
/// program ends with status 0 at the end of the input, and with 1 at a line that is not obeyed.
template <class Obey>
int runCommandLines(Obey obey) {
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    std::string pending;
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
        std::array<char, 4096> chunk{};
        const auto size = read(STDIN_FILENO, chunk.data(), chunk.size());
        if (size <= 0) {
            QCoreApplication::quit();
            return;
        }
        pending.append(chunk.data(), static_cast<std::size_t>(size));
        for (auto end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
            const auto line = pending.substr(0, end);
            pending.erase(0, end + 1);
            if (!obey(line)) {
                QCoreApplication::exit(1);
                return;
            }
        }
    });
    return QCoreApplication::exec();
}
