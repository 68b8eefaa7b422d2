#pragma once
// The host stand-in as a whole: the open document, its edit transaction, the mass edit
// with its progress and cancel, and the host's folders. The bridge calls work on it.
#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "sim/document.h"

namespace ostin::sim {

class Host {
public:
  static Host& Instance();

  // The open document.
  Document& Doc() { return document_; }
  void Open(Document document);
  // A new document from the host's default document in the data folder.
  static Document NewDocument();
  static std::string DefaultDocumentPath();

  // The host year: the option's when one is set, else the document's.
  int32_t Version() const;
  std::optional<int32_t> VersionOption;

  // Edit transaction: cancel rolls the document back to its state at the start.
  bool StartEdit(const std::string& title);
  bool EndEdit();
  bool CancelEdit();
  bool InEdit() const { return snapshot_.has_value(); }

  // Mass edit: progress goes to the listener; a cancel request makes the next progress
  // call answer that the user has cancelled.
  int32_t StartMassEdit(int32_t region, int32_t jobSize);
  bool MassEditProgress(int32_t handle, int16_t increment);
  bool EndMassEdit(int32_t handle, bool cancel);
  std::function<void(int64_t done, int64_t total)> ProgressListener;
  std::atomic<bool> CancelRequested{false};
  // Tests: the n-th progress call of a mass edit answers cancel (0 never).
  int CancelAtProgressCall = 0;

  // Folders: the music folder (FxGetFinalePath(3)) and the settings file.
  std::string MusicFolder() const;
  std::string IniFileName() const;

  // Faults to stand for a host that misbehaves, by bridge call name: Refuse makes the
  // call answer failure, Throw makes it raise a foreign failure. For tests.
  enum class Fault { Refuse, Throw };
  std::map<std::string, Fault> Faults;
  // True when the call is to answer failure; raises for a Throw fault.
  bool Refuses(const char* call) const;

  // The tuning block of each fretted instrument: the one its last load handed over, which
  // the plug-in writes into as the host's own. Forgotten whenever the document changes.
  std::map<RecordKey, int16_t*> FretTuningBlocks;

  // The calls made on edits and mass edits, in order, for tests to read.
  std::vector<std::string> CallLog;

  // Back to a fresh host with an empty document.
  void Reset();

private:
  Document document_;
  std::optional<Document> snapshot_;
  int32_t massEditHandle_ = 0;
  int64_t massEditDone_ = 0;
  int32_t massEditJob_ = 0;
  int progressCalls_ = 0;
};

} // namespace ostin::sim
