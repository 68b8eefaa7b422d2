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

struct FormatCase {
  const char* Name;
  std::string Text;
  std::vector<std::string> Args;
  std::string Expected;
};

TEST_F(MessagesTest, FormatStringFillsPlaceholdersInTurn) {
  const FormatCase cases[] = {
      {"fewer arguments than placeholders",
       "Zeile %1, Position %2: %3",
       {"4"},
       "Zeile 4, Position %2: %3"},
      {"a missing placeholder stops the rest", "a %1 b %3", {"x", "y", "z"}, "a x b %3"},
      {"the same placeholder twice",
       "Bogen %1 in Takt %2, vor Bogen %1",
       {"7", "3"},
       "Bogen 7 in Takt 3, vor Bogen 7"},
      {"an argument is filled in its turn", "%1 / %2", {"<%2>", "two"}, "<two> / two"},
      {"an argument holding its own placeholder", "[%1]", {"%1%1"}, "[%1%1]"},
      {"no arguments", "Version %1.%2.%3", {}, "Version %1.%2.%3"},
      {"an empty text", "", {"x"}, ""},
      {"a plain replace also hits the start of %10", "%10", {"a"}, "a0"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FormatString(c.Text, c.Args), c.Expected) << c.Name;
  }
}

TEST_F(MessagesTest, FormatResStringFillsTheRunningLanguagesText) {
  EXPECT_EQ(FormatResString(139, {"1", "2", "0"}), "Версия 1.2.0");
  SetLanguage(kLanguageGerman);
  EXPECT_EQ(FormatResString(139, {"1", "2", "0"}), "Version 1.2.0");
  EXPECT_EQ(FormatResString(208, {"-2147220143", "MusicXML internal error"}),
            "MusicXML-Fehler -2147220143: MusicXML internal error");
}

struct TextCase {
  int32_t Language;
  int32_t Id;
  std::string Expected;
};

TEST_F(MessagesTest, MessageTextReadsTheRunningLanguagesTable) {
  const TextCase cases[] = {
      {kLanguageMain, 151, "Ostin Light for Finale error %1:"},
      {kLanguageGerman, 151, "Ostin Light für Finale Fehler %1:"},
      {kLanguageItalian, 151, "Errore %1 di Ostin Light per Finale:"},
      {kLanguageMain, 149, "Untitled"},
      {kLanguageGerman, 149, "Unbenannt"},
      {kLanguageItalian, 149, "Senza titolo"},
      {kLanguageMain, 185, "MusicXML экспорт прерван"},
      {kLanguageGerman, 185, "MusicXML-Export abgebrochen"},
      {kLanguageItalian, 185, "Esportazione MusicXML interrotta"},
      {kLanguageMain, 167, "файл  MuseData и не файл MusicXML."},
      {kLanguageMain, 166, "Ошибка чтения MuseData. Проверьте, что вы читаете "},
      {kLanguageGerman, 161, "Zugriff verweitert auf XML-Datei"},
      {kLanguageGerman, 106, "&Durchsuchen..."},
      // Rows that only the main table has.
      {kLanguageGerman, 215, "MusicXML требует Windows Scripting 5.6 или позже"},
      {kLanguageItalian, 225, "Не выбраны файлы MuseData."},
      // Ids without a row.
      {kLanguageMain, 100, ""},
      {kLanguageMain, 115, ""},
      {kLanguageGerman, 156, ""},
      {kLanguageItalian, 226, ""},
  };
  for (const auto& c : cases) {
    SetLanguage(c.Language);
    EXPECT_EQ(MessageText(c.Id), c.Expected) << c.Language << " " << c.Id;
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
    if (row.Id > 213) {
      EXPECT_EQ(row.German, nullptr);
      EXPECT_EQ(row.Italian, nullptr);
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

// Sets an environment variable for the life of the object, or unsets it for nullptr.
class ScopedEnv {
public:
  ScopedEnv(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    Set(value);
  }
  ~ScopedEnv() { Set(old_ ? old_->c_str() : nullptr); }
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
  void Set(const char* value) {
    if (value != nullptr) {
      setenv(name_, value, 1);
    } else {
      unsetenv(name_);
    }
  }
  const char* name_;
  std::optional<std::string> old_;
};

struct EnvCase {
  const char* LcAll;
  const char* LcMessages;
  const char* Lang;
  int32_t Expected;
};

TEST(LanguageTest, LanguageFromEnvironmentTakesTheFirstLocaleSet) {
  const EnvCase cases[] = {
      {"de_DE.UTF-8", nullptr, nullptr, kLanguageGerman},
      {nullptr, nullptr, "it_IT.UTF-8", kLanguageItalian},
      {"", "it_CH", "de_DE", kLanguageItalian},
      {"en_US.UTF-8", "de_DE", "it_IT", kLanguageMain},
      {nullptr, nullptr, "ru_RU.UTF-8", kLanguageMain},
      {nullptr, nullptr, "C", kLanguageMain},
      {nullptr, nullptr, nullptr, kLanguageMain},
  };
  for (const auto& c : cases) {
    ScopedEnv lcAll("LC_ALL", c.LcAll);
    ScopedEnv lcMessages("LC_MESSAGES", c.LcMessages);
    ScopedEnv lang("LANG", c.Lang);
    EXPECT_EQ(LanguageFromEnvironment(), c.Expected)
        << (c.LcAll ? c.LcAll : "-") << " " << (c.LcMessages ? c.LcMessages : "-") << " "
        << (c.Lang ? c.Lang : "-");
  }
}

TEST(LanguageTest, LanguageFromNameKnowsCodesAndNumbers) {
  const std::pair<const char*, int32_t> cases[] = {
      {"ru", kLanguageMain},
      {"en", kLanguageMain},
      {"main", kLanguageMain},
      {"1031", kLanguageGerman},
      {"de", kLanguageGerman},
      {"it", kLanguageItalian},
      {"de_DE", 0},
      {"fr", 0},
      {"", 0},
  };

  for (const auto& [name, expected] : cases) {
    EXPECT_EQ(LanguageFromName(name), expected) << name;
  }
}

} // namespace
} // namespace ostin
