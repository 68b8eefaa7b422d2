#pragma once
// Bridge calls of the music frames: frames, entries, notes and their metrics.
// Handles and pointers are 32-bit values of the host, valid while the frame is open;
// indexes of entries and notes run from 1. Results are 16-bit with 0 for failure unless
// a comment says otherwise.
#include <cstdint>

// Opens the frame of a layer (from 0) in a measure of the staff at a slot of a staff list;
// the handle, or 0. With mirrorOK 0 the caller may write: a layer without a frame gets one.
int32_t FxLoadTgf(int16_t iuList, int16_t slot, int16_t meas, int16_t layer, int16_t mirrorOK);
// The head of an open frame; mirror is non-zero for a mirrored frame.
int16_t GetTgf(int32_t tgf, int16_t* iuList, int16_t* staffSlot, int16_t* inst, int16_t* meas,
               int16_t* layer, int16_t* mirror, int16_t* frame, int16_t* spare,
               int16_t* numEntries);
// Writes the open frame back into the document.
int16_t FxSaveTgf(int32_t tgf);
// Closes the frame without writing it; its handle and pointers die.
int16_t FxFreeTgf(int32_t tgf);
// Inserts number new entries in front of the 0-based position offset.
int16_t FxInsertExentry(int32_t tgf, int16_t offset, int16_t number);

int16_t GetEntry(int32_t tgf, int16_t index, int32_t* exentry, int32_t* entnum, int16_t* dura,
                 int16_t* orgposi, int32_t* ef, int16_t* xef, int16_t* numNotes, int32_t* elldur,
                 int32_t* actdur, int16_t* clef);
int16_t GetExentry(int32_t tgf, int16_t index, int32_t* exentry);
int16_t SetEntry(int32_t exentry, int16_t dura, int16_t orgposi, int32_t ef, int16_t xef,
                 int16_t numNotes);
int16_t GetNote(int32_t exentry, int16_t index, int32_t* exnote, int16_t* tcd, int16_t* alteration,
                int16_t* noteID, int32_t* flag);
int16_t SetNote(int32_t exentry, int16_t index, int16_t tcd, int16_t alteration, int16_t noteID,
                int32_t flag);

// Measure length in EDUs for a staff, by the time in force there (32-bit; 0 for failure).
int32_t FxGetMeasureDuration(int16_t inst, int16_t meas);
// The MIDI key the host plays for a note: by its pointer, or by frame handle, entry index
// and note index. options is 0. The key, or -1 for an unknown note.
int16_t FxNoteToMidi(int32_t exnote, int16_t options);
int16_t TgfNoteToMidi(int32_t tgf, int16_t entry, int16_t note, int16_t options);

// Metrics. New calls give a handle (0 for failure); an array of entry metrics holds its
// elements at the handles that follow the first one by one.
int32_t NewEntryMetrics();
int16_t DeleteEntryMetrics(int32_t metrics);
int32_t NewEntryMetricsArray(int16_t numEntries);
int16_t DeleteEntryMetricsArray(int32_t array);
int32_t NewMeasureMetrics();
int16_t DeleteMeasureMetrics(int32_t metrics);
// 0 when the host has no metrics for the entry (not laid out).
int16_t FxGetEntryMetrics(int16_t inst, int16_t meas, int32_t entnum, int32_t metrics,
                          int16_t options);
// 0 when the host has no metrics for the frame's entries.
int16_t FxGetTgfEntryMetrics(int32_t tgf, int32_t array, int32_t measureMetrics, int16_t options);
int16_t GetEntryMetrics(int32_t metrics, int16_t* layer, int32_t* edu, int16_t* symDur,
                        int16_t* numNotes, int32_t* entryFlags, int32_t* headRectLeft,
                        int32_t* headRectTop, int32_t* headRectRight, int32_t* headRectBottom,
                        int32_t* stemRectLeft, int32_t* stemRectTop, int32_t* stemRectRight,
                        int32_t* stemRectBottom, int16_t* secondsDivider, int32_t* lastDot,
                        int32_t* firstAcci);
// A note of an entry's metrics, index from 1.
int16_t GetNoteMetrics(int32_t metrics, int16_t index, int32_t* hval, int32_t* noteStart,
                       int16_t* noteWidth, int16_t* noteID);
int16_t GetMeasureMetrics(int32_t metrics, int16_t* ssys, int16_t* iu, int16_t* slot,
                          int32_t* horzPercent, int16_t* mewidth, int16_t* scalewidth,
                          int32_t* percent, int32_t* lperc, int32_t* ssysTop, int32_t* fipTop,
                          int32_t* fipBottom, int32_t* fipTopStaffLine, int32_t* meposadj,
                          int16_t* frontRepWidth, int16_t* backRepWidth, int16_t* barWidth,
                          int32_t* top, int32_t* left, int32_t* bottom, int32_t* right,
                          int32_t* topStaffLine);
