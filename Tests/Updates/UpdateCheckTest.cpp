#include "Updates/UpdatesFixture.h"

namespace tavro {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class UpdateCheckTest : public UpdatesFixture {
protected:
    QString failureAgainst(const Outcome<HttpsClient::Response>& response) {
        const auto answer = checkAgainst(response);
        return answer.isSuccess() ? QStringLiteral("no failure") : answer.failure().description();
    }

    static Json changed(const char* pointer, const Json& value) {
        auto json = ManifestTexts::whole();
        json[Json::json_pointer(pointer)] = value;
        return json;
    }

    const QString unavailable =
        QStringLiteral("The TAVRO update service is temporarily unavailable. Please try again later.");
    const QString badVersion = QStringLiteral("The update manifest version is invalid.");
    const QString badChecksum = QStringLiteral("The update checksum is invalid.");
    const QString badName = QStringLiteral("The update filename is invalid.");
};

TEST_F(UpdateCheckTest, knowsItsOwnVersion) {
    const auto key = QStringLiteral("CFBundleShortVersionString");
    EXPECT_EQ(service.installedVersion(), QStringLiteral("1.3.0"));
    information.values[key] = QStringLiteral(" v01.2.3-beta+exp\n");
    EXPECT_EQ(service.installedVersion(), QStringLiteral("1.2.3-beta"));
    information.values[key] = QStringLiteral("unknown");
    EXPECT_EQ(service.installedVersion(), QStringLiteral("0.0.0"));
    information.values.erase(key);
    EXPECT_EQ(service.installedVersion(), QStringLiteral("0.0.0"));
}

TEST_F(UpdateCheckTest, asksTheFirstAddressThatIsNamed) {
    information.values = {
        {QStringLiteral("TAVROUpdateFeedURL"), QStringLiteral("https://first.example/")},
        {QStringLiteral("PelmontUpdateFeedURL"), QStringLiteral("https://second.example/")}};
    const auto ignore = [](const Answer&) {};
    const auto first = service.check(ignore);
    information.values.erase(QStringLiteral("TAVROUpdateFeedURL"));
    const auto second = service.check(ignore);
    information.values.clear();
    const auto third = service.check(ignore);
    ASSERT_THAT(https.requests, SizeIs(3));
    EXPECT_EQ(https.requests[0].address, QUrl(QStringLiteral("https://first.example/")));
    EXPECT_EQ(https.requests[1].address, QUrl(QStringLiteral("https://second.example/")));
    EXPECT_EQ(https.requests[2].address, QUrl(QStringLiteral("https://default.invalid/latest.json")));
    EXPECT_EQ(https.requests[0].longest, 1024 * 1024);
}

TEST_F(UpdateCheckTest, asksNothingButHttps) {
    for (const auto* address :
         {"http://feed.example/", "HTTPS://feed.example/", "ftp://feed.example/", "file:///etc/passwd",
          "feed.example", "", "https:", "https://", "https://feed example/", " https://feed.example/"}) {
        information.values[QStringLiteral("TAVROUpdateFeedURL")] = QString::fromLatin1(address);
        EXPECT_EQ(failureAgainst(servedManifest(ManifestTexts::whole())), unavailable) << address;
    }
    EXPECT_THAT(https.requests, IsEmpty());
}

TEST_F(UpdateCheckTest, offersWhatIsNewer) {
    const auto answer = checkAgainst(servedManifest(ManifestTexts::whole()));
    ASSERT_TRUE(answer.isSuccess()) << answer.failure();
    EXPECT_EQ(answer.value(), available());
}

TEST_F(UpdateCheckTest, offersNothingElse) {
    const auto key = QStringLiteral("CFBundleShortVersionString");
    const auto offersTo = [&](const char* installed) {
        information.values[key] = QString::fromLatin1(installed);
        const auto answer = checkAgainst(servedManifest(ManifestTexts::whole()));
        EXPECT_TRUE(answer.isSuccess());
        return answer.isSuccess() && answer.value().has_value();
    };
    EXPECT_FALSE(offersTo("1.4.0"));
    EXPECT_FALSE(offersTo("1.4.0+build"));
    EXPECT_FALSE(offersTo("1.4.1"));
    EXPECT_FALSE(offersTo("2.0.0-alpha"));
    EXPECT_TRUE(offersTo("1.4.0-beta.2"));
    EXPECT_TRUE(offersTo("unknown"));
}

TEST_F(UpdateCheckTest, offersOnlyWhatThereIsForThePlatform) {
    verifier.knowsLinux = true;
    const auto withLinux = checkAgainst(servedManifest(ManifestTexts::whole()));
    ASSERT_TRUE(withLinux.isSuccess());
    ASSERT_TRUE(withLinux.value());
    EXPECT_EQ(withLinux.value()->package.fileName, "tavro.deb");
    auto json = ManifestTexts::whole();
    json["platforms"].erase("linux");
    const auto without = checkAgainst(servedManifest(json));
    ASSERT_TRUE(without.isSuccess()) << without.failure();
    EXPECT_FALSE(without.value());
}

TEST_F(UpdateCheckTest, takesNoAnswerButTwoHundred) {
    for (const auto status : {0, 100, 201, 204, 206, 301, 302, 304, 404, 410, 500, 503}) {
        EXPECT_EQ(failureAgainst(served(QByteArray::fromStdString(ManifestTexts::whole().dump()), status)),
                  unavailable)
            << status;
    }
}

TEST_F(UpdateCheckTest, refusesAManifestThatIsTooLong) {
    EXPECT_EQ(failureAgainst(HttpsClient::Response{.status = 200, .body = {}, .isTooLong = true}),
              unavailable);
}

TEST_F(UpdateCheckTest, passesOnWhatTheSystemSays) {
    const auto reason = QStringLiteral("Connection refused");
    const auto answer = checkAgainst(UpdateFailure::ofSystem(reason));
    ASSERT_FALSE(answer.isSuccess());
    EXPECT_EQ(answer.failure().description(), reason);
    EXPECT_FALSE(answer.failure().error());
}

TEST_F(UpdateCheckTest, passesOnWhyTheManifestCannotBeRead) {
    EXPECT_EQ(failureAgainst(served("<html></html>")), QStringLiteral("not JSON at line 1, column 1"));
    EXPECT_EQ(failureAgainst(served("")), QStringLiteral("empty"));
    EXPECT_EQ(failureAgainst(servedManifest(changed("/version", 1))),
              QStringLiteral("\"version\": expected a text, found 1"));
}

TEST_F(UpdateCheckTest, refusesOtherSchemasAndVersions) {
    EXPECT_EQ(failureAgainst(servedManifest(changed("/schemaVersion", 2))), badVersion);
    EXPECT_EQ(failureAgainst(servedManifest(changed("/schemaVersion", 0))), badVersion);
    for (const auto* version : {"", "1.4", "V1.4.0", "latest"}) {
        EXPECT_EQ(failureAgainst(servedManifest(changed("/version", version))), badVersion) << version;
    }
}

TEST_F(UpdateCheckTest, refusesAVersionThatLeavesItsFolder) {
    for (const auto* version : {"1.4.0-/../../x", "1.4.0+/../../x", "1.4.0-a/b"}) {
        EXPECT_EQ(failureAgainst(servedManifest(changed("/version", version))), badVersion) << version;
    }
    EXPECT_EQ(failureAgainst(servedManifest(changed("/version", std::string("1.4.0-a\0b", 9)))), badVersion);
}

TEST_F(UpdateCheckTest, refusesEveryPackageThatIsNotRight) {
    for (const auto* platform : {"windows", "macos", "linux"}) {
        const auto with = [&](const char* key, const std::string& value) {
            return failureAgainst(
                servedManifest(changed(("/platforms/" + std::string(platform) + "/" + key).c_str(), value)));
        };
        for (const auto* url :
             {"http://updates.example/x", "Https://updates.example/x", "x", "", "https://"}) {
            EXPECT_EQ(with("url", url), unavailable) << platform << " " << url;
        }
        for (const auto& hash :
             {std::string(63, 'a'), std::string(65, 'a'), std::string(64, 'g'), std::string()}) {
            EXPECT_EQ(with("sha256", hash), badChecksum) << platform << " " << hash;
        }
        for (const auto& name :
             {std::string("../x.dmg"), std::string("a/b.dmg"), std::string(), std::string("."),
              std::string(".."), std::string("/x"), std::string("x/"), std::string("a\0b", 3)}) {
            EXPECT_EQ(with("fileName", name), badName) << platform << " " << name;
        }
    }
}

TEST_F(UpdateCheckTest, namesTheFirstFaultOnly) {
    auto json = changed("/platforms/windows/fileName", "../x");
    json["platforms"]["macos"]["url"] = "http://updates.example/";
    EXPECT_EQ(failureAgainst(servedManifest(json)), badName);
    json["platforms"]["windows"]["sha256"] = "";
    EXPECT_EQ(failureAgainst(servedManifest(json)), badChecksum);
    json["platforms"]["windows"]["url"] = "http://updates.example/";
    EXPECT_EQ(failureAgainst(servedManifest(json)), unavailable);
    json["schemaVersion"] = 2;
    EXPECT_EQ(failureAgainst(servedManifest(json)), badVersion);
}

TEST_F(UpdateCheckTest, takesAChecksumHoweverItIsWritten) {
    std::string hash;
    for (int byte = 0; byte < 32; ++byte) {
        hash += "AB:";
    }
    const auto answer = checkAgainst(servedManifest(changed("/platforms/macos/sha256", " " + hash + "-")));
    EXPECT_TRUE(answer.isSuccess());
}

TEST_F(UpdateCheckTest, tellsNothingOnceItWasDropped) {
    bool isTold = false;
    auto check = service.check([&](const Answer&) { isTold = true; });
    check.reset();
    EXPECT_FALSE(https.answers.answer(servedManifest(ManifestTexts::whole())));
    information.values[QStringLiteral("TAVROUpdateFeedURL")] = QStringLiteral("http://feed.example/");
    check = service.check([&](const Answer&) { isTold = true; });
    check.reset();
    main.runToEnd();
    EXPECT_FALSE(isTold);
}

TEST_F(UpdateCheckTest, mayBeDroppedByWhoIsTold) {
    std::unique_ptr<PendingWork> check;
    int told = 0;
    const auto drop = [&](const Answer& answer) {
        check.reset();
        told += answer.isSuccess() ? 1 : 100;
    };
    check = service.check(drop);
    https.answers.answer(servedManifest(ManifestTexts::whole()));
    EXPECT_EQ(told, 1);
    information.values[QStringLiteral("TAVROUpdateFeedURL")] = QStringLiteral("http://feed.example/");
    check = service.check(drop);
    main.runToEnd();
    EXPECT_EQ(told, 101);
}

} // namespace
} // namespace tavro
