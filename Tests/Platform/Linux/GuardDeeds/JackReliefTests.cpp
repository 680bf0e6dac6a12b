#include "Platform/Linux/GuardDeeds/JackRelief.h"

#include "Platform/Posix/FileDescriptor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>

#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tavro::guard {
namespace {

namespace fs = std::filesystem;

/// A server's socket and a process that has reached it.
class Connection {
public:
    explicit Connection(const std::string& name) {
        std::string folder = (fs::temp_directory_path() / "tavro-relief-XXXXXX").string();
        folder_ = mkdtemp(folder.data());
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::ranges::copy((folder_ / name).string(), static_cast<char*>(address.sun_path));
        const auto* const place = reinterpret_cast<const sockaddr*>(&address);
        const posix::FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM, 0));
        EXPECT_EQ(bind(listener.number(), place, sizeof address), 0);
        EXPECT_EQ(listen(listener.number(), 1), 0);
        client_ = fork();
        if (client_ == 0) {
            const auto file = socket(AF_UNIX, SOCK_STREAM, 0);
            _exit(connect(file, place, sizeof address) == 0 ? pause() : 1);
        }
        server_ = posix::FileDescriptor(accept(listener.number(), nullptr, nullptr));
    }

    ~Connection() {
        end();
        fs::remove_all(folder_);
    }

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] pid_t client() const { return client_; }

    void stop() const {
        kill(client_, SIGSTOP);
        waitpid(client_, nullptr, WUNTRACED);
    }

    void end() {
        if (client_ > 0) {
            kill(client_, SIGKILL);
            waitpid(client_, nullptr, 0);
            client_ = -1;
        }
    }

    /// What the server sees of it.
    [[nodiscard]] bool isCut() const {
        char text = 0;
        const auto size = recv(server_.number(), &text, 1, MSG_DONTWAIT);
        EXPECT_TRUE(size == 0 || errno == EAGAIN);
        return size == 0;
    }

private:
    fs::path folder_;
    pid_t client_ = -1;
    posix::FileDescriptor server_;
};

TEST(JackReliefTest, AStoppedClientIsCutOff) {
    for (const auto* const name : {"jack_default_0_0", "pipewire-0"}) {
        const Connection connection(name);
        connection.stop();
        EXPECT_FALSE(connection.isCut());
        JackRelief::cutOffStopped(connection.client());
        EXPECT_TRUE(connection.isCut()) << name;
    }
}

TEST(JackReliefTest, ARunningClientStays) {
    const Connection connection("jack_default_0_0");
    JackRelief::cutOffStopped(connection.client());
    EXPECT_FALSE(connection.isCut());
}

TEST(JackReliefTest, OtherConnectionsStay) {
    const Connection connection("X0");
    connection.stop();
    JackRelief::cutOffStopped(connection.client());
    EXPECT_FALSE(connection.isCut());
}

TEST(JackReliefTest, AProcessMayGoAtAnyMoment) {
    constexpr auto rounds = 100;
    for (auto round = 0; round < rounds; ++round) {
        Connection connection("jack_default_0_0");
        std::atomic<bool> hasLooked = false;
        std::atomic<bool> hasGone = false;
        std::thread guard([&, process = connection.client()] {
            while (!hasGone) {
                JackRelief::cutOffStopped(process);
                hasLooked = true;
            }
        });
        while (!hasLooked) {
        }
        connection.end();
        hasGone = true;
        guard.join();
    }
}

} // namespace
} // namespace tavro::guard
