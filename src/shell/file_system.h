#pragma once
// The five file-system calls the plug-in makes, with the results of the scripting service.
#include <string>

namespace ostin {

class FileSystemObject {
public:
  // Creates the service; raises failure 429 with a foreign source where it is not available.
  FileSystemObject();

  std::string BuildPath(const std::string& path, const std::string& name) const;
  // The folder part of a path; empty for a bare file name.
  std::string GetParentFolderName(const std::string& path) const;
  // The last part of a path less its extension.
  std::string GetBaseName(const std::string& path) const;
  bool FolderExists(const std::string& path) const;
  bool FileExists(const std::string& path) const;

  // Lets a test stand for a machine without the scripting service.
  static void SetAvailableForTests(bool available);
};

} // namespace ostin
