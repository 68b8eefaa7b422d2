#pragma once
// A host whose open document is the default new document with its default fonts.
#include <string>

#include "../support/host_test.h"
#include "platform/code_page.h"
#include "sim/text_store.h"

namespace ostin::testing {

class TextTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenDefault();
  }

  // Opens a new default document, which holds the default fonts.
  static void OpenDefault() { OpenData("default-document.json"); }

  // UTF-8 text of host code page bytes, for characters given by their codes.
  static std::string FromCodes(std::initializer_list<unsigned char> codes) {
    return HostToUtf8(std::string(codes.begin(), codes.end()));
  }
};

} // namespace ostin::testing
