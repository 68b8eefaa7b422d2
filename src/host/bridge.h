#pragma once
// The host bridge: the flat calls through which all score data passes. The host
// implements them; the plug-in calls them. Results are 16-bit with 0 for failure
// unless a comment says otherwise. Text slots hold bytes in the host's code page.
#include <cstdint>
#include <string>

#include "host/bridge_frames.h"
#include "host/bridge_records.h"
#include "host/bridge_text.h"

// Version: the host's year, 2000 to 2004.
int32_t FtxFinaleVersion();

// Extent: FtxCountItems(1) gives the measures of the document; FtxCountInstruments(0, -1)
// the staves of the score's staff list.
int32_t FtxCountItems(int16_t kind);
int16_t FtxCountInstruments(int16_t iuList, int16_t mode);

// Staff order: staff number to 0-based score position and back; -1 when there is none.
int16_t FxInstToSlot(int16_t inst, int16_t iuList);
int16_t FxSlotToInst(int16_t slot, int16_t iuList);

// Edit transactions: cancel rolls the document back to its state at the start.
int16_t FxStartFinaleEdit(const std::string& title);
int16_t FxEndFinaleEdit();
int16_t FxCancelFinaleEdit();
int16_t FxUpdateLayout(int16_t first, int16_t last);

// Mass edit with progress and cancel: FxStartMassEdit gives a handle (0 for failure),
// FxMassEditProgress gives 0 when the user has cancelled.
int32_t FxStartMassEdit(int32_t region, int32_t jobSize);
int16_t FxMassEditProgress(int32_t handle, int16_t increment, int16_t instrument, int16_t measure,
                           int16_t layer);
int16_t FxEndMassEdit(int32_t handle, int16_t cancel);

// Paths: the document handle and its path, host folders (kind 3: music folder), settings file.
int32_t FxGetCurrentEnigmaDocument();
int16_t FxGetDocumentPath(int32_t document, std::string* path);
int16_t FxGetFinalePath(int16_t kind, std::string* path);
int16_t FtxGetIniFileName(std::string* name);

// Other: the document has extracted parts (non-zero); layers per frame.
int16_t FtxExtractedPartIsUsed();
int16_t FxGetMaxLayers();
