#include "Expectations.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <stdexcept>

namespace tavro::proof {

namespace {

std::string describe(const std::vector<Bytes>& messages) {
    std::string text = std::to_string(messages.size()) + " [";
    for (const auto& message : messages) {
        text += " (";
        for (const auto byte : message) {
            text += ' ' + std::to_string(byte);
        }
        text += " )";
    }
    return text + " ]";
}

void fail(const std::string& actual, const std::string& expected, const std::string& what) {
    throw std::runtime_error(what + ": " + actual + " instead of " + expected);
}

} // namespace

void expect(bool condition, const std::string& words) {
    if (!condition) {
        throw std::runtime_error(words);
    }
}

void expectEqual(const std::string& actual, const std::string& expected, const std::string& what) {
    if (actual != expected) {
        fail("\"" + actual + "\"", "\"" + expected + "\"", what);
    }
}

void expectEqual(std::uint64_t actual, std::uint64_t expected, const std::string& what) {
    if (actual != expected) {
        fail(std::to_string(actual), std::to_string(expected), what);
    }
}

void expectEqual(const std::vector<Bytes>& actual, const std::vector<Bytes>& expected,
                 const std::string& what) {
    if (actual != expected) {
        fail(describe(actual), describe(expected), what);
    }
}

void waitFor(const std::function<bool()>& condition, const std::string& words) {
    const QDeadlineTimer deadline(std::chrono::seconds(60));
    while (true) {
        QCoreApplication::processEvents();
        if (condition()) {
            return;
        }
        expect(!deadline.hasExpired(), "waited in vain for " + words);
        QThread::msleep(1);
    }
}

} // namespace tavro::proof
