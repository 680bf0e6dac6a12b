#include "Updates/UpdatesFixture.h"
#include "UserInterface/AccessibleTree.h"
#include "UserInterface/TextContrasts.h"
#include "UserInterface/UpdateQuickAlert.h"
#include "UserInterface/UpdateQuickWindow.h"

#include <QTest>

namespace tavro {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::IsSupersetOf;

/// What the guidelines ask for texts of this size.
constexpr double enough = 4.5;

/// What a screen reader tells about the windows of the updates, and how well their texts stand out.
class UpdateWindowReadabilityTest : public UpdatesFixture {
protected:
    QQuickWindow* show() {
        window.create(model);
        window.bringToFront();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.window()));
        return window.window();
    }

    static std::vector<std::string> nodesWithoutProblemsIn(QQuickWindow* shown) {
        const AccessibleTree tree(shown);
        EXPECT_THAT(tree.problems(), IsEmpty());
        return tree.nodes();
    }

    /// The texts are invisible afterwards.
    static void expectContrasts(QQuickWindow* shown, std::size_t leastNumberOfTexts) {
        // What has just appeared gets its place only now.
        shown->grabWindow();
        const TextContrasts contrasts(*shown);
        EXPECT_THAT(contrasts.below(enough), IsEmpty());
        EXPECT_GE(contrasts.texts().size(), leastNumberOfTexts);
    }

    UpdateViewModel model{available(), service, [] {}};
    UpdateQuickWindow window;
    UpdateQuickAlert alert;
};

TEST_F(UpdateWindowReadabilityTest, theOffer) {
    auto* const shown = show();
    EXPECT_THAT(nodesWithoutProblemsIn(shown),
                IsSupersetOf({"Heading TAVRO Update", "StaticText 1.3.0  to  1.4.0", "Heading What's new",
                              "ListItem Better chords", "ListItem Fewer faults", "Button Later",
                              "Button Download and Open Installer"}));
    expectContrasts(shown, 9);
}

TEST_F(UpdateWindowReadabilityTest, aDownloadOfUnknownLength) {
    auto* const shown = show();
    model.install();
    https.requests.at(0).progress({.received = 2048, .expected = std::nullopt});
    EXPECT_THAT(nodesWithoutProblemsIn(shown),
                IsSupersetOf({"StaticText " + model.progressText().toStdString(),
                              std::string("StaticText Downloading and verifying the TAVRO installer...")}));
    // Those of the two buttons do not count: nobody can press them.
    expectContrasts(shown, 9);
}

TEST_F(UpdateWindowReadabilityTest, aDownloadOfKnownLength) {
    auto* const shown = show();
    model.install();
    https.requests.at(0).progress({.received = 512, .expected = 2048});
    EXPECT_THAT(nodesWithoutProblemsIn(shown), Contains("StaticText " + model.progressText().toStdString()));
    expectContrasts(shown, 9);
}

TEST_F(UpdateWindowReadabilityTest, aFailure) {
    auto* const shown = show();
    model.install();
    https.answers.answer(served(QByteArray(), 404));
    EXPECT_THAT(nodesWithoutProblemsIn(shown),
                Contains("StaticText The TAVRO update service is temporarily unavailable. Please try again "
                         "later."));
    expectContrasts(shown, 10);
}

TEST_F(UpdateWindowReadabilityTest, anAlert) {
    alert.show(QStringLiteral("TAVRO is up to date"),
               QStringLiteral("Version 1.3.0 is the newest available version."));
    auto* const shown = alert.window();
    ASSERT_NE(shown, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(shown));
    EXPECT_THAT(nodesWithoutProblemsIn(shown),
                IsSupersetOf({"AlertMessage TAVRO is up to date", "Button OK"}));
    expectContrasts(shown, 3);
}

} // namespace
} // namespace tavro
