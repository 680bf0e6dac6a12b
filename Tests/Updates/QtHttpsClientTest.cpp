#include "Updates/QtHttpsClient.h"

#include "Presets/TemporaryFolder.h"
#include "Updates/EventLoop.h"
#include "Updates/HttpsServer.h"
#include "Updates/UpdatesFixture.h"

#include <QTcpServer>

#include <optional>
#include <vector>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

using Response = HttpsClient::Response;

Outcome<Response> outcomeOf(const std::function<std::unique_ptr<PendingWork>(Completion<Response>)>& begin) {
    std::optional<Outcome<Response>> outcome;
    const auto work = begin([&](const Outcome<Response>& told) { outcome = told; });
    EXPECT_FALSE(outcome.has_value()) << "told inside the call";
    EventLoop::runUntil([&] { return outcome.has_value(); });
    return outcome.value_or(UpdateFailure::ofSystem(QStringLiteral("nothing was told")));
}

class QtHttpsClientTest : public testing::Test {
protected:
    static constexpr qint64 plenty = 1 << 20;

    static void SetUpTestSuite() { server = std::make_unique<HttpsServer>(); }

    static void TearDownTestSuite() { server.reset(); }

    Outcome<Response> fetch(const QUrl& url, qint64 longest = plenty) {
        return outcomeOf(
            [&](Completion<Response> completion) { return client.fetch(url, longest, completion); });
    }

    Outcome<Response> fetch(const char* path, qint64 longest = plenty) {
        return fetch(server->url(QString::fromLatin1(path)), longest);
    }

    Outcome<Response> download(const char* path, qint64 longest = plenty) {
        if (!QFile::exists(file)) {
            folder.file(QStringLiteral("file"), "what was there before");
        }
        progress.clear();
        return outcomeOf([&](Completion<Response> completion) {
            return client.download(
                server->url(QString::fromLatin1(path)), file, longest,
                [this](const HttpsClient::Progress& made) { progress.push_back(made); }, completion);
        });
    }

    static std::string failureOf(const Outcome<Response>& outcome) {
        EXPECT_FALSE(outcome.isSuccess());
        EXPECT_TRUE(outcome.isSuccess() || !outcome.failure().error());
        return outcome.isSuccess() ? "" : outcome.failure().description().toStdString();
    }

    static int statusOf(const Outcome<Response>& outcome) {
        EXPECT_TRUE(outcome.isSuccess()) << outcome.failure();
        return outcome.isSuccess() ? outcome.value().status : -1;
    }

    /// What the server sends.
    static QByteArray body(int size) {
        QByteArray bytes(size, '\0');
        for (int place = 0; place < size; ++place) {
            bytes[place] = static_cast<char>(place % 256);
        }
        return bytes;
    }

    static inline std::unique_ptr<HttpsServer> server;
    QtHttpsClient client{{.patience = 20s, .additionalAuthorities = server->authority()}};
    TemporaryFolder folder;
    const QString file = folder.path(QStringLiteral("file"));
    std::vector<HttpsClient::Progress> progress;
};

TEST_F(QtHttpsClientTest, fetchesABody) {
    for (const auto* path : {"body/1000", "unannounced/1000", "chunks/300/700/0"}) {
        const auto outcome = fetch(path);
        ASSERT_TRUE(outcome.isSuccess()) << outcome.failure();
        EXPECT_EQ(outcome.value().status, 200);
        EXPECT_EQ(outcome.value().body.size(), 1000);
        EXPECT_FALSE(outcome.value().isTooLong);
    }
    const auto empty = fetch("body/0");
    ASSERT_TRUE(empty.isSuccess());
    EXPECT_EQ(empty.value().body, QByteArray());
}

TEST_F(QtHttpsClientTest, downloadsToAFile) {
    const auto outcome = download("body/200000");
    ASSERT_TRUE(outcome.isSuccess()) << outcome.failure();
    EXPECT_EQ(outcome.value().status, 200);
    EXPECT_EQ(outcome.value().body, QByteArray());
    EXPECT_EQ(TemporaryFolder::contentOf(file), body(200000));
    ASSERT_FALSE(progress.empty());
    EXPECT_EQ(progress.back(), (HttpsClient::Progress{.received = 200000, .expected = 200000}));
    ASSERT_EQ(statusOf(download("unannounced/5")), 200);
    EXPECT_EQ(TemporaryFolder::contentOf(file), body(5));
    EXPECT_EQ(progress.back(), (HttpsClient::Progress{.received = 5, .expected = std::nullopt}));
    ASSERT_EQ(statusOf(download("body/0")), 200);
    EXPECT_EQ(TemporaryFolder::contentOf(file), QByteArray());
}

TEST_F(QtHttpsClientTest, asksForAPackageAsItIs) {
    ASSERT_EQ(statusOf(download("encoding")), 200);
    EXPECT_EQ(TemporaryFolder::contentOf(file), QByteArray("identity"));
}

TEST_F(QtHttpsClientTest, tellsEveryStatus) {
    for (const auto status : {204, 304, 400, 401, 403, 404, 410, 500, 503}) {
        const auto path = "status/" + std::to_string(status);
        EXPECT_EQ(statusOf(fetch(path.c_str())), status);
        EXPECT_EQ(statusOf(download(path.c_str())), status);
        EXPECT_EQ(TemporaryFolder::contentOf(file), QByteArray()) << "an error page is no package";
    }
}

TEST_F(QtHttpsClientTest, followsRedirectsWithinHttps) {
    const auto outcome = fetch("redirect/redirect/body/10");
    ASSERT_TRUE(outcome.isSuccess()) << outcome.failure();
    EXPECT_EQ(outcome.value().status, 200);
    EXPECT_EQ(outcome.value().body, body(10));
    EXPECT_EQ(statusOf(fetch("redirect/status/404")), 404);
}

TEST_F(QtHttpsClientTest, takesARedirectOutOfHttpsForTheAnswer) {
    QTcpServer plain;
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    const auto path = "redirect/http/" + std::to_string(plain.serverPort());
    EXPECT_EQ(statusOf(fetch(path.c_str())), 302);
    EXPECT_EQ(statusOf(download(path.c_str())), 302);
    EXPECT_EQ(statusOf(fetch(("redirect/" + path).c_str())), 302);
    QCoreApplication::processEvents();
    EXPECT_FALSE(plain.hasPendingConnections()) << "nobody is asked without encryption";
    for (const auto* other : {"redirect/nowhere", "redirect/ftp", "redirect/file"}) {
        EXPECT_EQ(statusOf(fetch(other)), 302) << other;
    }
}

TEST_F(QtHttpsClientTest, doesNotFollowALoopForEver) {
    EXPECT_NE(failureOf(fetch("redirect/loop")), "");
}

TEST_F(QtHttpsClientTest, failsWhenTheBodyEndsTooEarly) {
    for (const auto* path : {"truncated/1000/999", "truncated/1000/0", "chunks/300/700"}) {
        EXPECT_NE(failureOf(fetch(path)), "") << path;
        EXPECT_NE(failureOf(download(path)), "") << path;
    }
}

TEST_F(QtHttpsClientTest, stopsWhereABodyIsTooLong) {
    for (const auto* path :
         {"body/1001", "unannounced/1001", "chunks/1000/1/0", "stalled/1001/1", "stalled/100000000000/1"}) {
        const auto fetched = fetch(path, 1000);
        ASSERT_TRUE(fetched.isSuccess()) << path << fetched.failure();
        EXPECT_EQ(fetched.value().status, 200) << path;
        EXPECT_TRUE(fetched.value().isTooLong) << path;
        EXPECT_EQ(fetched.value().body, QByteArray()) << path;
        const auto downloaded = download(path, 1000);
        ASSERT_TRUE(downloaded.isSuccess()) << path << downloaded.failure();
        EXPECT_TRUE(downloaded.value().isTooLong) << path;
        EXPECT_LE(QFileInfo(file).size(), 1000);
    }
    for (const auto* path : {"body/1000", "unannounced/1000", "chunks/1000/0"}) {
        const auto outcome = fetch(path, 1000);
        ASSERT_TRUE(outcome.isSuccess()) << path << outcome.failure();
        EXPECT_FALSE(outcome.value().isTooLong) << path;
    }
}

TEST_F(QtHttpsClientTest, losesPatienceWithAServerThatSendsNothing) {
    QtHttpsClient impatient({.patience = 100ms, .additionalAuthorities = server->authority()});
    for (const auto* path : {"stalled/1000/10", "silent"}) {
        const auto outcome = outcomeOf([&](Completion<Response> completion) {
            return impatient.fetch(server->url(QString::fromLatin1(path)), plenty, completion);
        });
        EXPECT_EQ(failureOf(outcome), "The request timed out.") << path;
    }
    // One that takes the connection and does not even begin to encrypt.
    QTcpServer dumb;
    ASSERT_TRUE(dumb.listen(QHostAddress::LocalHost));
    const auto outcome = outcomeOf([&](Completion<Response> completion) {
        return impatient.fetch(QUrl(QStringLiteral("https://localhost:%1/").arg(dumb.serverPort())), plenty,
                               completion);
    });
    EXPECT_EQ(failureOf(outcome), "The request timed out.");
}

TEST_F(QtHttpsClientTest, failsWhereNobodyAnswers) {
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
    const QUrl url(QStringLiteral("https://localhost:%1/").arg(closed.serverPort()));
    closed.close();
    EXPECT_THAT(failureOf(fetch(url)), HasSubstr("refused"));
}

TEST_F(QtHttpsClientTest, failsWithoutSuchAHost) {
    // Longer than a name may be, so that nobody is asked for it.
    const auto label = QString(60, QLatin1Char('a')) + QLatin1Char('.');
    const QUrl url(QStringLiteral("https://") + label.repeated(5) + QStringLiteral("example/"));
    ASSERT_TRUE(url.isValid());
    EXPECT_THAT(failureOf(fetch(url)), HasSubstr("not found"));
}

TEST_F(QtHttpsClientTest, waitsAMinuteUnlessItIsToldOtherwise) {
    EXPECT_EQ(QtHttpsClient::Settings().patience, 60s);
}

TEST_F(QtHttpsClientTest, readsNoMoreThanWasAnnounced) {
    const auto fetched = fetch("overlong/1000/2000");
    ASSERT_TRUE(fetched.isSuccess()) << fetched.failure();
    EXPECT_EQ(fetched.value().body, body(1000));
    ASSERT_EQ(statusOf(download("overlong/1000/2000")), 200);
    EXPECT_EQ(TemporaryFolder::contentOf(file), body(1000));
}

TEST_F(QtHttpsClientTest, asksNothingButHttps) {
    QTcpServer plain;
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    for (const auto& address : {QStringLiteral("http://localhost:%1/").arg(plain.serverPort()),
                                QUrl::fromLocalFile(folder.file(QStringLiteral("secret"), "x")).toString()}) {
        EXPECT_EQ(failureOf(fetch(QUrl(address))), "The address is not one of HTTPS.");
    }
    EXPECT_FALSE(plain.waitForNewConnection(0));
}

TEST_F(QtHttpsClientTest, trustsNobodyByItself) {
    QtHttpsClient shipped;
    const auto outcome = outcomeOf([&](Completion<Response> completion) {
        return shipped.fetch(server->url(QStringLiteral("body/10")), plenty, completion);
    });
    EXPECT_THAT(failureOf(outcome), HasSubstr("certificate"));
}

TEST_F(QtHttpsClientTest, refusesCertificatesThatAreNotRight) {
    using Certificate = HttpsServer::Certificate;
    for (const auto certificate : {Certificate::selfSigned, Certificate::ofOtherHost, Certificate::expired}) {
        const HttpsServer other(certificate);
        QtHttpsClient trusting({.patience = 20s, .additionalAuthorities = other.authority()});
        const auto outcome = outcomeOf([&](Completion<Response> completion) {
            return trusting.fetch(other.url(QStringLiteral("body/10")), plenty, completion);
        });
        EXPECT_THAT(failureOf(outcome), HasSubstr("certificate")) << static_cast<int>(certificate);
    }
}

TEST_F(QtHttpsClientTest, failsWhenTheFileCannotBeWritten) {
    const auto missing = outcomeOf([&](Completion<Response> completion) {
        return client.download(server->url(QStringLiteral("body/10")), folder.path(QStringLiteral("a/b")),
                               plenty, {}, completion);
    });
    EXPECT_EQ(failureOf(missing), "No such file or directory");
    const auto full = outcomeOf([&](Completion<Response> completion) {
        return client.download(server->url(QStringLiteral("body/10")), QStringLiteral("/dev/full"), plenty,
                               {}, completion);
    });
    EXPECT_EQ(failureOf(full), "No space left on device");
}

TEST_F(QtHttpsClientTest, endsWithWhoDropsIt) {
    bool isTold = false;
    auto work = client.fetch(server->url(QStringLiteral("stalled/1000/10")), plenty,
                             [&](const Outcome<Response>&) { isTold = true; });
    work.reset();
    // By then the dropped one would have been told.
    ASSERT_EQ(statusOf(fetch("body/10")), 200);
    EXPECT_FALSE(isTold);

    std::optional<int> status;
    work =
        client.fetch(server->url(QStringLiteral("body/10")), plenty, [&](const Outcome<Response>& outcome) {
            work.reset();
            status = statusOf(outcome);
        });
    EventLoop::runUntil([&] { return status.has_value(); });
    EXPECT_EQ(status, 200);
}

} // namespace
} // namespace tavro
