#include "PerformanceModel/PresetText.h"
#include "PerformanceModel/ScaleEngine.h"
#include "Presets/PresetFile.h"
#include "Presets/TemporaryFolder.h"

#include <QUuid>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace tavro {
namespace {

TEST(ExamplePresets, areAsTheProgramWritesThemAndFitForUse) {
    const QDir examples(QStringLiteral(TAVRO_EXAMPLES));
    const auto files = examples.entryList({QStringLiteral("*.tvp")}, QDir::Files);
    ASSERT_GE(files.size(), 2);
    std::set<std::string> identifiers;
    for (const auto& name : files) {
        SCOPED_TRACE(name.toStdString());
        const auto path = examples.filePath(name);
        const auto preset = PresetFile::read(path);
        EXPECT_EQ(PresetText::encodeFile(preset), TemporaryFolder::contentOf(path).toStdString());
        EXPECT_FALSE(QUuid(QString::fromStdString(preset.id)).isNull());
        EXPECT_TRUE(identifiers.insert(preset.id).second);
        EXPECT_FALSE(preset.isBuiltIn);
        EXPECT_FALSE(preset.name.empty());
        const auto& state = preset.state;
        const auto& scales = ScaleEngine::scales();
        EXPECT_TRUE(
            std::ranges::any_of(scales, [&](const auto& scale) { return scale.name == state.scaleName; }));
        EXPECT_FALSE(state.holdMode && state.smartHoldMode);
    }
}

} // namespace
} // namespace tavro
