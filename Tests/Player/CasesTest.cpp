#include "Player/KeyScript.h"
#include "Player/PlayedAtOnce.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace tavro {
namespace {

using Json = nlohmann::json;

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

bool isNoteOff(const Json& line) {
    return line.contains("midi") && (line["midi"][0].get<int>() & 0xF0) == 0x80;
}

/// The lines with what is free made equal: note-offs of one run sorted, and the status behind a run that
/// names one of its notes made plain.
std::vector<Json> comparable(const std::string& text) {
    std::vector<Json> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(Json::parse(line));
    }
    bool isBehindNoteOffs = false;
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        if (isNoteOff(*line)) {
            const auto end = std::find_if(line, lines.end(), [time = (*line)["t"]](const Json& other) {
                return !isNoteOff(other) || other["t"] != time;
            });
            std::sort(line, end);
            isBehindNoteOffs = true;
            line = end - 1;
        } else if (line->contains("midi")) {
            isBehindNoteOffs = false;
        } else if (isBehindNoteOffs && (*line)["status"].get<std::string>().starts_with("Note Off ")) {
            (*line)["status"] = "Note Off";
        }
    }
    return lines;
}

std::vector<std::filesystem::path> scripts() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(TAVRO_CASES)) {
        if (entry.path().extension() == ".keys") {
            paths.push_back(entry.path());
        }
    }
    std::ranges::sort(paths);
    return paths;
}

class Cases : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(Cases, printsWhatIsExpected) {
    auto expectedPath = GetParam();
    expectedPath.replace_extension(".jsonl");
    std::ostringstream printed;
    JsonLinesOutput output(printed);
    playedAtOnce(KeyScript::parse(contentOf(GetParam())), output);

    const auto actual = comparable(printed.str());
    const auto expected = comparable(contentOf(expectedPath));
    for (std::size_t index = 0; index < std::min(actual.size(), expected.size()); ++index) {
        ASSERT_EQ(actual[index], expected[index]) << "at line " << index + 1;
    }
    EXPECT_EQ(actual.size(), expected.size());
}

INSTANTIATE_TEST_SUITE_P(Random, Cases, testing::ValuesIn(scripts()),
                         [](const auto& script) { return "case" + script.param.stem().string(); });

TEST(Cases, allAreThere) {
    EXPECT_EQ(scripts().size(), 120U);
}

TEST(CasesComparison, seesADifference) {
    const std::string line = R"({"t":0,"midi":[144,60,100]})";
    EXPECT_EQ(comparable(line), comparable(line));
    EXPECT_NE(comparable(line), comparable(R"({"t":0,"midi":[144,61,100]})"));
    EXPECT_NE(comparable(line), comparable(R"({"t":1,"midi":[144,60,100]})"));
}

TEST(CasesComparison, leavesTheOrderOfNoteOffsFreeOnlyWithinARun) {
    const std::string first = "{\"t\":0,\"midi\":[128,60,0]}\n";
    const std::string second = "{\"t\":0,\"midi\":[128,61,0]}\n";
    const std::string on = "{\"t\":0,\"midi\":[144,64,9]}\n";
    EXPECT_EQ(comparable(first + second), comparable(second + first));
    EXPECT_NE(comparable(first + on + second), comparable(second + on + first));
}

} // namespace
} // namespace tavro
