#include "shell/messages.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "shell/message_table.h"

namespace ostin {
namespace {

// Puts the main language back after each test.
class MessagesTest : public ::testing::Test {
protected:
  void TearDown() override { SetLanguage(kLanguageMain); }
};

TEST_F(MessagesTest, FormatStringFillsPlaceholdersInTurn) {
  // Text, arguments, result.
  const std::tuple<std::string, std::vector<std::string>, std::string> cases[] = {
      // clang-format off
      {"Zeile %1, Position %2: %3", {"4"}, "Zeile 4, Position %2: %3"}, // fewer arguments
      {"a %1 b %3", {"x", "y", "z"}, "a x b %3"}, // a missing placeholder stops the rest
      {"Bogen %1 in Takt %2, vor Bogen %1", {"7", "3"}, "Bogen 7 in Takt 3, vor Bogen 7"},
      {"%1 / %2", {"<%2>", "two"}, "<two> / two"}, // an argument is filled in its turn
      {"[%1]", {"%1%1"}, "[%1%1]"},                // an argument holding its own placeholder
      {"Version %1.%2.%3", {}, "Version %1.%2.%3"}, {"", {"x"}, ""},
      {"%10", {"a"}, "a0"}, // a plain replace also hits the start of %10
      // clang-format on
  };
  for (const auto& [text, args, expected] : cases) {
    EXPECT_EQ(FormatString(text, args), expected) << text;
  }
}

TEST_F(MessagesTest, FormatResStringFillsTheRunningLanguagesText) {
  EXPECT_EQ(FormatResString(139, {"1", "2", "0"}), "Версия 1.2.0");
  SetLanguage(kLanguageGerman);
  EXPECT_EQ(FormatResString(139, {"1", "2", "0"}), "Version 1.2.0");
  EXPECT_EQ(FormatResString(208, {"-2147220143", "MusicXML internal error"}),
            "MusicXML-Fehler -2147220143: MusicXML internal error");
}

TEST_F(MessagesTest, MessageTextReadsTheRunningLanguagesTable) {
  constexpr int32_t M = kLanguageMain, G = kLanguageGerman, I = kLanguageItalian;
  const std::tuple<int32_t, int32_t, std::string> cases[] = {
      // clang-format off
      {M, 151, "Ostin Light for Finale error %1:"}, {G, 151, "Ostin Light für Finale Fehler %1:"},
      {I, 151, "Errore %1 di Ostin Light per Finale:"},
      {M, 149, "Untitled"}, {G, 149, "Unbenannt"}, {I, 149, "Senza titolo"},
      {M, 185, "MusicXML экспорт прерван"}, {G, 185, "MusicXML-Export abgebrochen"},
      {I, 185, "Esportazione MusicXML interrotta"},
      {M, 167, "файл  MuseData и не файл MusicXML."},
      {M, 166, "Ошибка чтения MuseData. Проверьте, что вы читаете "},
      {G, 161, "Zugriff verweitert auf XML-Datei"}, {G, 106, "&Durchsuchen..."},
      // Rows that only the main table has.
      {G, 215, "MusicXML требует Windows Scripting 5.6 или позже"}, {I, 225, "Не выбраны файлы MuseData."},
      // Ids without a row.
      {M, 100, ""}, {M, 115, ""}, {G, 156, ""}, {I, 226, ""},
      // clang-format on
  };
  for (const auto& [language, id, expected] : cases) {
    SetLanguage(language);
    EXPECT_EQ(MessageText(id), expected) << language << " " << id;
  }
}

TEST_F(MessagesTest, WebPageRowsNameTheProductWebPage) {
  for (int32_t language : {kLanguageMain, kLanguageGerman, kLanguageItalian}) {
    SetLanguage(language);
    EXPECT_NE(MessageText(125).find(kProductWebPage), std::string::npos) << language;
    EXPECT_NE(MessageText(209).find(kProductWebPage), std::string::npos) << language;
    EXPECT_NE(MessageText(138).find('&'), std::string::npos) << language;
  }
}

std::set<std::string> Placeholders(const std::string& text) {
  static const std::regex placeholder("%[0-9]+");
  std::set<std::string> found;
  for (std::sregex_iterator it(text.begin(), text.end(), placeholder), end; it != end; ++it) {
    found.insert(it->str());
  }
  return found;
}

TEST(MessageTableTest, HoldsExactlyTheKnownIds) {
  const std::set<int32_t> absent = {115, 116, 126, 127, 128, 130, 131,
                                    132, 133, 146, 147, 148, 156};
  std::vector<int32_t> expected;
  for (int32_t id = 101; id <= 225; ++id) {
    if (!absent.contains(id)) expected.push_back(id);
  }
  std::vector<int32_t> ids;
  for (const auto& row : MessageRows())
    ids.push_back(row.Id);
  EXPECT_EQ(ids, expected);
}

TEST(MessageTableTest, TranslationsAreCompleteAndKeepPlaceholdersAndAccessKeys) {
  for (const auto& row : MessageRows()) {
    SCOPED_TRACE(row.Id);
    ASSERT_NE(row.Main, nullptr);
    EXPECT_STRNE(row.Main, "");
    if (row.Id > 213) { // rows only the main table has
      EXPECT_TRUE(row.German == nullptr && row.Italian == nullptr);
      continue;
    }
    ASSERT_NE(row.German, nullptr);
    ASSERT_NE(row.Italian, nullptr);
    EXPECT_STRNE(row.German, "");
    EXPECT_STRNE(row.Italian, "");
    EXPECT_EQ(Placeholders(row.German), Placeholders(row.Main));
    EXPECT_EQ(Placeholders(row.Italian), Placeholders(row.Main));
    // Italian marks an access key wherever German does.
    EXPECT_EQ(std::string(row.Italian).find('&') == std::string::npos,
              std::string(row.German).find('&') == std::string::npos);
  }
}

// The locale variables of each row in turn, each unset for nullptr; the old values come back.
TEST(LanguageTest, LanguageFromEnvironmentTakesTheFirstLocaleSet) {
  const char* names[] = {"LC_ALL", "LC_MESSAGES", "LANG"};
  std::optional<std::string> old[3];
  for (int i = 0; i < 3; ++i)
    if (const char* value = std::getenv(names[i])) old[i] = value;
  auto set = [&](int i, const char* value) {
    value ? setenv(names[i], value, 1) : unsetenv(names[i]);
  };
  const std::tuple<const char*, const char*, const char*, int32_t> cases[] = {
      // clang-format off
      {"de_DE.UTF-8", nullptr, nullptr, kLanguageGerman}, {nullptr, nullptr, "it_IT.UTF-8", kLanguageItalian},
      {"", "it_CH", "de_DE", kLanguageItalian}, {"en_US.UTF-8", "de_DE", "it_IT", kLanguageMain},
      {nullptr, nullptr, "ru_RU.UTF-8", kLanguageMain}, {nullptr, nullptr, "C", kLanguageMain},
      {nullptr, nullptr, nullptr, kLanguageMain},
      // clang-format on
  };
  for (const auto& [lcAll, lcMessages, lang, expected] : cases) {
    set(0, lcAll);
    set(1, lcMessages);
    set(2, lang);
    EXPECT_EQ(LanguageFromEnvironment(), expected)
        << (lcAll ? lcAll : "-") << " " << (lcMessages ? lcMessages : "-") << " "
        << (lang ? lang : "-");
  }
  for (int i = 0; i < 3; ++i)
    set(i, old[i] ? old[i]->c_str() : nullptr);
}

TEST(LanguageTest, LanguageFromNameKnowsCodesAndNumbers) {
  const std::pair<const char*, int32_t> cases[] = {
      // clang-format off
      {"ru", kLanguageMain}, {"en", kLanguageMain}, {"main", kLanguageMain}, {"1031", kLanguageGerman},
      {"de", kLanguageGerman}, {"it", kLanguageItalian}, {"de_DE", 0}, {"fr", 0}, {"", 0},
      // clang-format on
  };
  for (const auto& [name, expected] : cases) {
    EXPECT_EQ(LanguageFromName(name), expected) << name;
  }
}

} // namespace
} // namespace ostin
