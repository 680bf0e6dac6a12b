#include "UserInterface/UpdateQuickWindow.h"

#include "Updates/UpdatesFixture.h"
#include "UserInterface/UpdateQuickAlert.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTest>

#include <string>

namespace tavro {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::string>& warnings() {
    static std::vector<std::string> all;
    return all;
}

void noteWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
    // A display that is not there can do little.
    const bool isOfDisplay = text.startsWith(QLatin1String("This plugin does not support"));
    if (type != QtDebugMsg && type != QtInfoMsg && !isOfDisplay) {
        warnings().push_back(text.toStdString());
    }
}

/// Windows that nobody sees. A warning of the scene fails the test.
class UpdateQuickWindowTest : public UpdatesFixture {
protected:
    void SetUp() override {
        warnings().clear();
        previousHandler_ = qInstallMessageHandler(noteWarning);
    }

    void TearDown() override {
        qInstallMessageHandler(previousHandler_);
        EXPECT_THAT(warnings(), IsEmpty());
    }

    static QQuickItem* item(QQuickWindow* window, const char* name) {
        auto* const found = window->findChild<QQuickItem*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    static QString text(QQuickWindow* window, const char* name) {
        return item(window, name)->property("text").toString();
    }

    static void click(QQuickWindow* window, const char* name) {
        auto* const target = item(window, name);
        const auto middle = target->mapToScene({target->width() / 2, target->height() / 2}).toPoint();
        QTest::mouseClick(window, Qt::LeftButton, {}, middle);
    }

    QQuickWindow* show() {
        window.create(model);
        window.bringToFront();
        EXPECT_NE(window.window(), nullptr);
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.window()));
        return window.window();
    }

    int terminations = 0;
    UpdateViewModel model{available(), service, [this] { ++terminations; }};
    UpdateQuickWindow window;
    UpdateQuickAlert alert;

private:
    QtMessageHandler previousHandler_ = nullptr;
};

TEST_F(UpdateQuickWindowTest, showsTheOffer) {
    auto* const shown = show();
    EXPECT_EQ(shown->title(), QStringLiteral("TAVRO Update"));
    EXPECT_EQ(shown->size(), QSize(520, 410));
    EXPECT_EQ(shown->minimumSize(), shown->maximumSize());
    EXPECT_FALSE(shown->flags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    EXPECT_TRUE(shown->flags() & Qt::WindowCloseButtonHint);
    EXPECT_EQ(text(shown, "versions"), QStringLiteral("1.3.0  to  1.4.0"));
    EXPECT_EQ(item(shown, "notes")->property("count").toInt(), 2);
    EXPECT_EQ(text(shown, "status"), QString());
    EXPECT_FALSE(item(shown, "status")->isVisible());
    EXPECT_FALSE(item(shown, "progress")->isVisible());
    EXPECT_EQ(text(shown, "later"), QStringLiteral("Later"));
    EXPECT_EQ(text(shown, "install"), QStringLiteral("Download and Open Installer"));
    EXPECT_TRUE(item(shown, "later")->isEnabled());
    EXPECT_TRUE(item(shown, "install")->isEnabled());
}

TEST_F(UpdateQuickWindowTest, isClosedByLaterAndComesBack) {
    auto* const shown = show();
    click(shown, "later");
    EXPECT_FALSE(shown->isVisible());
    window.bringToFront();
    EXPECT_EQ(window.window(), shown);
    EXPECT_TRUE(QTest::qWaitForWindowActive(shown));
    QTest::keyClick(shown, Qt::Key_Escape);
    EXPECT_FALSE(shown->isVisible());
    EXPECT_THAT(https.requests, IsEmpty());
}

TEST_F(UpdateQuickWindowTest, installsWithTheButton) {
    auto* const shown = show();
    click(shown, "install");
    EXPECT_THAT(https.requests, SizeIs(1));
    EXPECT_EQ(text(shown, "status"), QStringLiteral("Downloading and verifying the TAVRO installer..."));
    EXPECT_TRUE(item(shown, "status")->isVisible());
    EXPECT_TRUE(item(shown, "progress")->isVisible());
    EXPECT_FALSE(item(shown, "later")->isEnabled());
    EXPECT_FALSE(item(shown, "install")->isEnabled());
    click(shown, "later");
    QTest::keyClick(shown, Qt::Key_Escape);
    EXPECT_TRUE(shown->isVisible());
    QTest::keyClick(shown, Qt::Key_Return);
    EXPECT_THAT(https.requests, SizeIs(1));

    EXPECT_LT(item(shown, "progress")->property("progress").toDouble(), 0);
    EXPECT_FALSE(item(shown, "filled")->isVisible());
    https.requests[0].progress({.received = 512, .expected = 2048});
    EXPECT_EQ(item(shown, "progress")->property("progress").toDouble(), 0.25);
    EXPECT_TRUE(item(shown, "filled")->isVisible());
    EXPECT_EQ(item(shown, "filled")->width(), item(shown, "progress")->width() / 4);

    https.answers.answer(served(QByteArray()));
    files.digests.answer(QStringLiteral("00"));
    EXPECT_EQ(text(shown, "status"), QStringLiteral("The downloaded update failed its security check."));
    EXPECT_FALSE(item(shown, "progress")->isVisible());
    EXPECT_TRUE(item(shown, "later")->isEnabled());
    EXPECT_TRUE(item(shown, "install")->isEnabled());
}

TEST_F(UpdateQuickWindowTest, installsWithTheReturnKeyWhateverHasTheKeyboard) {
    auto* const shown = show();
    item(shown, "later")->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(shown, Qt::Key_Return);
    EXPECT_THAT(https.requests, SizeIs(1));
}

TEST_F(UpdateQuickWindowTest, showsTextsAsTheyAre) {
    auto update = available();
    update.manifest.releaseNotes = {"<b>bold</b> <img src=\"https://updates.example/x.png\">",
                                    std::string(5000, 'x')};
    update.manifest.version = "1.4.0-<i>x</i>" + std::string(500, 'y');
    UpdateViewModel other(update, service, [] {});
    UpdateQuickWindow otherWindow;
    otherWindow.create(other);
    otherWindow.bringToFront();
    auto* const shown = otherWindow.window();
    ASSERT_NE(shown, nullptr);
    for (const auto* texts : {"versions", "status"}) {
        EXPECT_EQ(item(shown, texts)->property("textFormat").toInt(), 0) << "plain";
    }
    EXPECT_LE(item(shown, "versions")->width(), 520);
    const auto isScrolled = [&] { return item(shown, "notes")->property("contentHeight").toDouble() > 300; };
    EXPECT_TRUE(QTest::qWaitFor(isScrolled));
}

TEST_F(UpdateQuickWindowTest, outlivesItsModel) {
    {
        UpdateViewModel other(available(), service, [] {});
        window.create(other);
        window.bringToFront();
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(text(window.window(), "versions"), QStringLiteral("  to  "));
    QTest::keyClick(window.window(), Qt::Key_Return);
    EXPECT_THAT(https.requests, IsEmpty());
}

TEST_F(UpdateQuickWindowTest, showsAlertsInOneWindow) {
    alert.show(QStringLiteral("Could not check for updates"), QStringLiteral("Host not found"));
    auto* const shown = alert.window();
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowActive(shown));
    EXPECT_EQ(shown->modality(), Qt::ApplicationModal);
    EXPECT_EQ(text(shown, "message"), QStringLiteral("Could not check for updates"));
    EXPECT_EQ(text(shown, "informativeText"), QStringLiteral("Host not found"));
    const auto* const ok = item(shown, "ok");
    const auto fits = [&] { return ok->mapToScene({0, ok->height()}).y() < shown->height() - 10; };
    EXPECT_TRUE(QTest::qWaitFor(fits)) << "the button is cut off";
    alert.show(QStringLiteral("TAVRO is up to date"),
               QStringLiteral("Version 1.3.0 is the newest available version."));
    EXPECT_EQ(alert.window(), shown);
    EXPECT_EQ(text(shown, "message"), QStringLiteral("TAVRO is up to date"));
    EXPECT_EQ(text(shown, "ok"), QStringLiteral("OK"));
    click(shown, "ok");
    EXPECT_FALSE(shown->isVisible());
    alert.show(QStringLiteral("Again"), QString());
    EXPECT_TRUE(QTest::qWaitForWindowActive(shown));
    QTest::keyClick(shown, Qt::Key_Return);
    EXPECT_FALSE(shown->isVisible());
}

} // namespace
} // namespace tavro
