#include "KeyboardInput/KeyNames.h"

#include "KeyboardMapping/PhysicalKeyMapper.h"

#include <unordered_map>

namespace tavro {

namespace {

const std::unordered_map<std::int64_t, const char*>& words() {
    static const std::unordered_map<std::int64_t, const char*> table{
        {36, "Return"},   {48, "Tab"},        {49, "Space"},        {51, "Backspace"},    {53, "Escape"},
        {110, "Menu"},    {114, "Insert"},    {115, "Home"},        {116, "Page Up"},     {117, "Delete"},
        {119, "End"},     {121, "Page Down"}, {123, "Left"},        {124, "Right"},       {125, "Down"},
        {126, "Up"},      {72, "Volume Up"},  {73, "Volume Down"},  {74, "Mute"},         {122, "F1"},
        {120, "F2"},      {99, "F3"},         {118, "F4"},          {96, "F5"},           {97, "F6"},
        {98, "F7"},       {100, "F8"},        {101, "F9"},          {109, "F10"},         {103, "F11"},
        {111, "F12"},     {105, "F13"},       {107, "F14"},         {113, "F15"},         {106, "F16"},
        {64, "F17"},      {79, "F18"},        {80, "F19"},          {90, "F20"},          {65, "Keypad ."},
        {67, "Keypad *"}, {69, "Keypad +"},   {75, "Keypad /"},     {76, "Keypad Enter"}, {78, "Keypad -"},
        {81, "Keypad ="}, {82, "Keypad 0"},   {83, "Keypad 1"},     {84, "Keypad 2"},     {85, "Keypad 3"},
        {86, "Keypad 4"}, {87, "Keypad 5"},   {88, "Keypad 6"},     {89, "Keypad 7"},     {91, "Keypad 8"},
        {92, "Keypad 9"}, {95, "Keypad ,"},   {71, "Keypad Clear"},
    };
    return table;
}

constexpr std::int64_t keyLeftOfOne = 50;
constexpr std::int64_t keyBesideShift = 10;

} // namespace

std::optional<std::string> KeyNames::name(std::int64_t keyCode, KeyboardLayoutKind layoutKind) {
    if (keyCode == keyLeftOfOne) {
        return nameLeftOfOne(layoutKind);
    }
    if (keyCode == keyBesideShift) {
        return "<";
    }
    if (const auto character = PhysicalKeyMapper::character(keyCode, layoutKind)) {
        return toUtf8(*character);
    }
    const auto found = words().find(keyCode);
    return found == words().end() ? std::nullopt : std::optional<std::string>(found->second);
}

std::string KeyNames::nameLeftOfOne(KeyboardLayoutKind layoutKind) {
    return layoutKind == KeyboardLayoutKind::qwertz ? "^" : "`";
}

} // namespace tavro
