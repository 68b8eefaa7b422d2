// One entry into MusicXML: a forward, a rest, or one note per note of a chord.
#include <array>
#include <optional>
#include <string_view>

#include "export/to_xml.h"
#include "host/bridge.h"
#include "host/bridge_frames.h"
#include "host/bridge_text.h"
#include "host/frames/frame_bits.h"
#include "host/text/noteheads.h"
#include "model/arithmetic_numbers.h"
#include "model/arithmetic_pitch.h"
#include "platform/code_page.h"
#include "shell/error_log.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kLoadEntryHandler = Code(0x80040353);
constexpr int32_t kLoadNoteheadDetailsHandler = Code(0x80040353);
constexpr int32_t kCreatePitchHandler = Code(0x80040351);
constexpr int32_t kCreateUnpitchedHandler = Code(0x800406F0);
constexpr int32_t kCreateAccidentalHandler = Code(0x8004041E);
constexpr int32_t kCreateNoteheadHandler = Code(0x80040717);
constexpr int32_t kCreatePercussionInstrumentHandler = Code(0x800406EF);
constexpr int32_t kStartOfTieHandler = Code(0x8004034F);
constexpr int32_t kCheckAppoggiaturaHandler = Code(0x800405B6);
constexpr int32_t kFindPrintObjectHandler = Code(0x8004072A);
constexpr int32_t kLoadTieAlterationHandler = Code(0x80040522);

constexpr int16_t kWholeNote = 4096;
constexpr int16_t kHalfNote = 2048;
constexpr int16_t kRecordFontBit = 0x0001; // the record names a font of its own
constexpr int16_t kTieDirectionSet = 0x0800;
constexpr int16_t kTieUnder = 0x0001;
constexpr int32_t kAppoggiaturaSlack = 16;

// Accidental texts by alteration, from -2.
constexpr std::array<std::string_view, 5> kAccidentals{"flat-flat", "flat", "natural", "sharp",
                                                       "double-sharp"};

// A quarter-tone accidental of a font and the base text it gives way to.
struct QuarterTone {
  std::string_view Parsed;
  std::string_view KeptFor; // a base text holding this keeps its own text
  std::string_view Alter;   // the pitch's alter text with this accidental
};
constexpr std::array<QuarterTone, 4> kQuarterTones{{{"quarter-flat", "sharp", "-0.5"},
                                                    {"quarter-sharp", "flat", "0.5"},
                                                    {"three-quarters-flat", "sharp", "-1.5"},
                                                    {"three-quarters-sharp", "flat", "1.5"}}};

const QuarterTone* QuarterToneOf(std::string_view text) {
  for (const QuarterTone& row : kQuarterTones)
    if (row.Parsed == text) return &row;
  return nullptr;
}

// The name of a record's own font, or the given font.
std::string FontOf(int16_t flag, int16_t font, const std::string& given) {
  if (!(flag & kRecordFontBit)) return given;
  std::string name;
  return FxFontNumToName(font, &name) ? HostToUtf8(name) : std::string();
}

// The record of an entry that belongs to a note: tried from incidence 0 until the note's
// number matches or the records end.
template <class Record> bool LoadForNote(Record& record, int32_t entnum, int16_t noteID) {
  for (int16_t inci = 0; record.Load(entnum, inci); ++inci)
    if (record.NoteID == noteID) return true;
  return false;
}

// The standard handler with the place of the failure between number and description.
template <class Body>
decltype(auto) GuardedAt(const std::string& head, const std::string& place, int32_t ownNumber,
                         Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    Failure failure = CurrentFailure();
    Register(failure);
    if (failure.IsOwn()) throw failure;
    WriteLog(head + std::to_string(failure.Number) + place + failure.Description);
    throw Failure::Internal(ownNumber);
  }
}

int16_t ChildNumber16(const xml::XmlNode& element, const std::string& name) {
  const auto text = ChildText(element, name);
  return text ? static_cast<int16_t>(NumericValue(*text).value_or(0)) : int16_t{0};
}
} // namespace

// What the paths of one entry share.
struct ToXml::EntryContext {
  Entry& ThisEntry;
  Tgf& Frame;
  xml::XmlNode Measure;
  XmlPart& Part;
  int16_t Staff;
  int16_t EntryIndex;
  int32_t Ef = 0;
  int16_t Xef = 0;
  int16_t Dura = 0;
  int32_t Actdur = 0;
  int16_t Layer = 0;
  int16_t Voice = 0;
  int16_t StaffNumber = 0;
  std::string PrintObject;
  std::vector<CrossStaff> CrossStaves;
};

xml::XmlNode ToXml::LoadEntry(Entry& entry, Tgf& tgf, xml::XmlNode measure, XmlPart& part,
                              int16_t staff, int16_t entryIndex) {
  const std::string place = " in instrument " + std::to_string(tgf.Inst) + ", measure " +
                            std::to_string(tgf.Meas) + ", entry " + std::to_string(entryIndex) +
                            ": \r\n";
  return GuardedAt("ToXml LoadEntry error ", place, kLoadEntryHandler, [&] {
    EntryContext context{entry, tgf, measure, part, staff, entryIndex, 0, 0, 0, 0, 0, 0, 0, {}, {}};
    context.Ef = entry.Ef;
    context.Xef = entry.Xef;
    context.Dura = entry.Dura;
    context.Actdur = entry.Actdur;
    context.Layer = part.Layers.at(staff);
    context.Voice = static_cast<int16_t>(context.Layer + 1 + ((context.Ef & kEfVoiceTwo) ? 4 : 0) +
                                         8 * (staff - 1));
    NoteVoice(part, context.Voice);
    context.StaffNumber = part.Staves() > 1 ? staff : 0;
    context.PrintObject = FindPrintObject(context.Layer, staff, part);
    const bool isNote = context.Ef & kEfNote;
    xml::XmlNode result;
    if ((!isNote && (context.Ef & kEfHidden)) || (isNote && entry.NumNotes == 0))
      result = LoadForward(context);
    else if (isNote)
      result = LoadNotes(context);
    else
      result = LoadRest(context);
    // Tuplet ends and chord symbols come with their own stage.
    return result;
  });
}

xml::XmlNode ToXml::LoadForward(EntryContext& context) {
  xml::XmlNode forward = CursorMove("forward", context.Actdur);
  forward.appendChild(Element("voice", std::to_string(context.Voice)));
  if (context.StaffNumber > 0)
    forward.appendChild(Element("staff", std::to_string(context.StaffNumber)));
  return context.Measure.appendChild(forward);
}

xml::XmlNode ToXml::LoadNotes(EntryContext& context) {
  if (context.Ef & kEfCrossStaff) {
    CrossStaff record;
    for (int16_t inci = 0; record.Load(context.ThisEntry.Entnum, inci); ++inci)
      context.CrossStaves.push_back(record);
  }
  xml::XmlNode result;
  for (int16_t n = 1; n <= context.ThisEntry.NumNotes; ++n) {
    Note* note = context.ThisEntry.Notes(n);
    if (note == nullptr) break;
    const xml::XmlNode element = LoadOneNote(context, *note, n);
    if (n == 1) result = element;
  }
  return result;
}

xml::XmlNode ToXml::LoadOneNote(EntryContext& context, Note& note, int16_t index) {
  const int32_t flag = note.Flag;
  const bool from2002 = FinaleVersion >= 2002;
  const bool grace = context.Ef & kEfGrace;
  const int16_t frameLayer = context.Frame.Layer;
  xml::XmlNode element = Element("note");
  if (context.Ef & kEfHidden)
    element.setAttribute("print-object", "no");
  else if (!context.PrintObject.empty())
    element.setAttribute("print-object", context.PrintObject);
  if (LayerNoSpacing.at(frameLayer) ||
      (from2002 && ((context.Xef & kXefNoSpacing) || (flag & kNoteNoSpacing))))
    element.setAttribute("print-spacing", "no");
  // In the measure now, so that the search for a tie's start sees it.
  element = context.Measure.appendChild(element);

  bool cue = false;
  if (grace) {
    xml::XmlNode graceElement = Element("grace");
    if (context.Xef & kXefGraceSlash) graceElement.setAttribute("slash", "yes");
    if (context.Ef & kEfPerformanceData) {
      const int16_t percent = CheckAppoggiatura(context.Frame, context.EntryIndex);
      if (percent > 0) graceElement.setAttribute("steal-time-following", std::to_string(percent));
    }
    element.appendChild(graceElement);
  } else {
    const bool cueEntry = from2002 ? (context.Xef & kXefCue) : (context.Ef & kEfHidden);
    cue = LayerCue.at(frameLayer) || cueEntry || (from2002 && (flag & kNoteCue));
    if (cue) element.appendChild(Element("cue"));
  }
  if (index > 1) element.appendChild(Element("chord"));

  int16_t key = 0;
  xml::XmlNode notehead;
  const xml::XmlNode pitch = NotePitch(context, note, key);
  const bool unpitched = context.Part.PercussionStaff;
  if (unpitched) {
    const XmlPercussion* drum = PercussionOf(context.Part, key);
    if (drum && drum->Active)
      notehead =
          CreateNotehead(context.Dura >= kHalfNote ? drum->OpenNotehead : drum->ClosedNotehead,
                         context.Part.NoteheadFont.at(context.Staff), context.Dura, false);
  }
  if (pitch) element.appendChild(pitch);
  if (!grace) element.appendChild(Element("duration", std::to_string(context.Actdur)));

  bool tieEnd = flag & kNoteTieEnd;
  const bool tieStart = flag & kNoteTieStart;
  if (!cue && !unpitched) {
    if (tieEnd) {
      if (StartOfTie(element)) {
        xml::XmlNode tie = Element("tie");
        tie.setAttribute("type", "stop");
        element.appendChild(tie);
      } else {
        tieEnd = false; // a tie end without its start is forgotten for the whole note
      }
    }
    if (tieStart) {
      xml::XmlNode tie = Element("tie");
      tie.setAttribute("type", "start");
      element.appendChild(tie);
    }
  }

  bool hasInstrument = false;
  if (unpitched) {
    if (const xml::XmlNode instrument = CreatePercussionInstrument(key, context.Part)) {
      element.appendChild(instrument);
      hasInstrument = true;
    }
  }
  if (!hasInstrument && context.Part.Instruments >= 2)
    AddInstrument(element, context.Part.LayerInstruments.at(context.Staff).at(context.Layer));
  element.appendChild(Element("voice", std::to_string(context.Voice)));
  AddNoteType(context, note, element, grace, cue, notehead);

  if (flag & kNoteAccidentalShown) {
    const xml::XmlNode alter = pitch ? ChildElement(pitch, "alter") : xml::XmlNode();
    const int16_t alterValue = alter ? ChildNumber16(pitch, "alter") : int16_t{0};
    bool quarterTone = false;
    xml::XmlNode accidental =
        CreateAccidental(alterValue, context.ThisEntry.Entnum, note.NoteID,
                         context.Part.AccidentalFont.at(context.Staff), quarterTone);
    if (accidental) {
      if (flag & kNoteAccidentalParentheses) accidental.setAttribute("editorial", "yes");
      element.appendChild(accidental);
      const QuarterTone* row = quarterTone ? QuarterToneOf(accidental.text()) : nullptr;
      if (row && alter) alter.text(std::string(row->Alter));
    }
  }
  // Time modifications come with the tuplets' own stage.

  if (ShowStems.at(context.Staff) && context.Dura < kWholeNote) {
    std::string stem = XmlStem;
    if (context.Ef & kEfSplitStem)
      stem =
          context.ThisEntry.NumNotes == 1 ? "double" : ((flag & kNoteSplitStemUp) ? "up" : "down");
    if (!stem.empty()) element.appendChild(Element("stem", stem));
  }
  if (notehead && !notehead.text().empty()) element.appendChild(notehead);
  if (context.StaffNumber > 0)
    element.appendChild(Element("staff", std::to_string(NoteStaff(context, note))));
  AddNoteNotations(context, note, element, index, tieStart, tieEnd);
  // Tablature and lyrics come with their own stage.
  return element;
}

// The pitch or unpitched element of a note; key is the MIDI key + 1 on a percussion staff.
xml::XmlNode ToXml::NotePitch(EntryContext& context, Note& note, int16_t& key) {
  XmlPart& part = context.Part;
  xml::XmlNode pitch;
  if (part.PercussionStaff) {
    key = static_cast<int16_t>(FxNoteToMidi(note.Exnote, 0) + 1);
    pitch = CreateUnpitched(key, note.Tcd, context.Staff, part);
  } else if (!part.TransposeChromatic) {
    pitch = CreatePitch(note.Tcd, note.Alteration, part);
  } else {
    const xml::XmlNode written = CreatePitch(note.Tcd, note.Alteration, part);
    const auto moved = static_cast<int16_t>(note.Tcd + part.TransposeChromaticInterval);
    pitch = CreatePitch(moved, note.Alteration, part);
    const int difference =
        part.TransposeChromaticSteps - (int{MidiNote(pitch)} - int{MidiNote(written)});
    if (difference != 0)
      pitch = CreatePitch(moved, static_cast<int16_t>(note.Alteration + difference), part);
  }
  const int16_t shift = OctaveShift.at(context.Staff);
  if (shift != 0 && pitch)
    if (const xml::XmlNode octave = pitch.selectSingleNode("octave | display-octave"))
      octave.text(std::to_string(ChildNumber16(pitch, octave.nodeName()) + shift));
  return pitch;
}

void ToXml::AddNoteType(EntryContext& context, Note& note, xml::XmlNode element, bool grace,
                        bool cue, xml::XmlNode& notehead) {
  std::string type;
  int16_t dots = 0;
  ParseDuration(context.Dura, type, dots);
  if (!type.empty()) {
    xml::XmlNode typeElement = Element("type", type);
    if (context.Ef & kEfNoteDetails) {
      int16_t percent = 100;
      const xml::XmlNode details = LoadNoteheadDetails(context.ThisEntry.Entnum, note.NoteID,
                                                       context.Part.NoteheadFont.at(context.Staff),
                                                       context.Dura, false, percent);
      if (details) notehead = details;
      const bool reduced = percent >= 1 && percent <= 99;
      if (reduced && !grace && !cue) typeElement.setAttribute("size", "cue");
      if (!reduced && (grace || cue)) typeElement.setAttribute("size", "full");
    } else if (cue) {
      typeElement.setAttribute("size", "full");
    }
    element.appendChild(typeElement);
  }
  for (int16_t i = 0; i < dots; ++i)
    element.appendChild(Element("dot"));
  if (dots == 0) return;
  if (!ShowDots.at(context.Staff))
    element.setAttribute("print-dot", "no");
  else if (const xml::XmlNode printObject = element.getAttributeNode("print-object"))
    element.setAttribute("print-dot", element.getAttribute("print-object"));
}

void ToXml::AddNoteNotations(EntryContext& context, Note& note, xml::XmlNode element, int16_t index,
                             bool tieStart, bool tieEnd) {
  xml::XmlNode notations = Element("notations");
  if (ShowTies.at(context.Staff)) {
    if (tieEnd) {
      xml::XmlNode tied = Element("tied");
      tied.setAttribute("type", "stop");
      notations.appendChild(tied);
    }
    if (tieStart) {
      xml::XmlNode tied = Element("tied");
      tied.setAttribute("type", "start");
      if (context.Ef & kEfTieAlterations) {
        const std::string orientation = LoadTieAlteration(context.ThisEntry, note);
        if (!orientation.empty()) tied.setAttribute("orientation", orientation);
      }
      notations.appendChild(tied);
    }
  } else if (tieEnd) {
    // The note stands behind a tie that the staff does not show.
    element.setAttribute("print-object", "no");
  }
  // Tuplets and entry shapes come with their own stage.
  if (WavyLineOpen.at(context.Staff)) {
    xml::XmlNode ornaments = ChildElement(notations, "ornaments");
    if (!ornaments) ornaments = notations.appendChild(Element("ornaments"));
    xml::XmlNode wavy = Element("wavy-line");
    wavy.setAttribute("type", "continue");
    ornaments.appendChild(wavy);
  }
  const bool marks = (context.Ef & kEfArticulations) || (context.Xef & kXefStaffExpressions);
  if (index == 1 && marks) {
    // Stays even when empty: articulations and staff expressions come with their own stage.
    element.appendChild(notations);
    return;
  }
  if (notations.hasChildNodes()) element.appendChild(notations);
}

// The staff of a note: its own, or the staff it is drawn on when it crosses over.
int16_t ToXml::NoteStaff(EntryContext& context, Note& note) {
  if (!(note.Flag & kNoteCrossStaff)) return context.Staff;
  for (const CrossStaff& record : context.CrossStaves)
    if (record.NoteID == note.NoteID)
      return static_cast<int16_t>(FxInstToSlot(record.Instrument, 0) - context.Part.StartSlot + 1);
  return context.Staff;
}

void ToXml::AddInstrument(xml::XmlNode element, const std::string& id) {
  if (id.empty()) return;
  xml::XmlNode instrument = Element("instrument");
  instrument.setAttribute("id", id);
  element.appendChild(instrument);
}

xml::XmlNode ToXml::LoadRest(EntryContext& context) {
  XmlPart& part = context.Part;
  Entry& entry = context.ThisEntry;
  xml::XmlNode element = context.Measure.appendChild(Element("note"));
  xml::XmlNode rest = element.appendChild(Element("rest"));
  if (!ShowRests.at(context.Staff))
    element.setAttribute("print-object", "no");
  else if (!context.PrintObject.empty())
    element.setAttribute("print-object", context.PrintObject);
  FinaleStem.clear(); // a rest's articulations get no stem side
  Note* first = entry.NumNotes >= 1 ? entry.Notes(1) : nullptr;
  if (!(context.Ef & kEfFloatingRest) && first != nullptr) {
    std::string step;
    int16_t octave = 0;
    if (PitchAndOctave(part.Tonic, part.Octave, first->Tcd, step, octave)) {
      rest.appendChild(Element("display-step", step));
      rest.appendChild(
          Element("display-octave", std::to_string(octave + OctaveShift.at(context.Staff))));
    }
  }
  const bool measureRest = entry.Dura == kWholeNote && context.Frame.NumEntries == 1;
  const int32_t duration =
      measureRest ? FxGetMeasureDuration(context.Frame.Inst, part.Measure) : context.Actdur;
  element.appendChild(Element("duration", std::to_string(duration)));
  if (part.PercussionStaff) {
    if (first != nullptr) {
      const auto key = static_cast<int16_t>(FxNoteToMidi(first->Exnote, 0) + 1);
      if (const xml::XmlNode instrument = CreatePercussionInstrument(key, part))
        element.appendChild(instrument);
    }
  } else if (part.Instruments > 1) {
    AddInstrument(element, part.LayerInstruments.at(context.Staff).at(context.Layer));
  }
  element.appendChild(Element("voice", std::to_string(context.Voice)));
  std::string type;
  int16_t dots = 0;
  ParseDuration(context.Dura, type, dots);
  if (!type.empty()) element.appendChild(Element("type", type));
  for (int16_t i = 0; i < dots; ++i)
    element.appendChild(Element("dot"));
  if (dots > 0 && !ShowDots.at(context.Staff)) element.setAttribute("print-dot", "no");
  // Time modifications come with the tuplets' own stage.
  if (context.StaffNumber > 0)
    element.appendChild(Element("staff", std::to_string(context.StaffNumber)));
  // Tuplets, articulations and staff expressions come with their own stage; the notations
  // of an entry that has marks stay, even empty.
  if ((context.Ef & kEfArticulations) || (context.Xef & kXefStaffExpressions))
    element.appendChild(Element("notations"));
  return element;
}

xml::XmlNode ToXml::CreatePitch(int16_t displacement, int16_t alteration, XmlPart& part) {
  return Guarded("ToXml CreatePitch error ", kCreatePitchHandler, [&] {
    std::string step;
    int16_t octave = 0;
    PitchAndOctave(part.Tonic, part.Octave, displacement, step, octave);
    const int alter = part.KeySignatureAlter(step) + alteration;
    xml::XmlNode pitch = Element("pitch");
    pitch.appendChild(Element("step", step));
    if (alter != 0) pitch.appendChild(Element("alter", std::to_string(alter)));
    pitch.appendChild(Element("octave", std::to_string(octave)));
    return pitch;
  });
}

xml::XmlNode ToXml::CreateUnpitched(int16_t key, int16_t displacement, int16_t staff,
                                    XmlPart& part) {
  return Guarded("ToXml CreateUnpitched error ", kCreateUnpitchedHandler, [&] {
    int16_t steps = 0;
    const XmlPercussion* drum = PercussionOf(part, key);
    if (drum && drum->Active) {
      steps = drum->StaffStep;
    } else {
      std::string step;
      int16_t octave = 0;
      PitchAndOctave("C", 4, displacement, step, octave);
      steps = WholeSteps("C", 4, step, octave);
    }
    std::string step;
    int16_t octave = 0;
    PitchAndOctave(part.StaffLinePitch.at(staff), part.StaffLineOctave.at(staff), steps, step,
                   octave);
    xml::XmlNode unpitched = Element("unpitched");
    unpitched.appendChild(Element("display-step", step));
    unpitched.appendChild(Element("display-octave", std::to_string(octave)));
    return unpitched;
  });
}

xml::XmlNode ToXml::CreateAccidental(int16_t alter, int32_t entnum, int16_t noteID,
                                     const std::string& font, bool& isQuarterTone) {
  return Guarded("ToXml CreateAccidental error ", kCreateAccidentalHandler, [&] {
    isQuarterTone = false;
    if (alter < -2 || alter > 2) return xml::XmlNode();
    const std::string base(kAccidentals[alter + 2]);
    std::string text = base;
    AcciAlterations record;
    record.FinaleVersion = FinaleVersion;
    if (FinaleVersion >= 2001 && entnum >= 1 && LoadForNote(record, entnum, noteID) &&
        record.Altacc != 0) {
      const std::string parsed =
          ParseAccidental(record.Altacc & 0xFF, FontOf(record.Flag, record.Font, font));
      if (const QuarterTone* row = QuarterToneOf(parsed)) {
        isQuarterTone = true;
        if (base.find(row->KeptFor) == std::string::npos) text = parsed;
      }
    }
    return Element("accidental", text);
  });
}

xml::XmlNode ToXml::CreateNotehead(int16_t character, const std::string& font, int32_t dura, bool) {
  return Guarded("ToXml CreateNotehead error ", kCreateNoteheadHandler, [&] {
    const NoteheadText parsed = ParseNotehead(character, font, dura, false);
    if (parsed.Text.empty()) return xml::XmlNode();
    xml::XmlNode notehead = Element("notehead", parsed.Text);
    if (!parsed.Filled.empty()) notehead.setAttribute("filled", parsed.Filled);
    if (parsed.Parentheses) notehead.setAttribute("parentheses", "yes");
    return notehead;
  });
}

xml::XmlNode ToXml::CreatePercussionInstrument(int16_t key, XmlPart& part) {
  return Guarded("ToXml CreatePercussionInstrument error ", kCreatePercussionInstrumentHandler,
                 [&] {
                   const XmlPercussion* drum = PercussionOf(part, key);
                   if (drum == nullptr || drum->InstrumentID.empty()) return xml::XmlNode();
                   xml::XmlNode instrument = Element("instrument");
                   instrument.setAttribute("id", drum->InstrumentID);
                   return instrument;
                 });
}

xml::XmlNode ToXml::StartOfTie(xml::XmlNode note) {
  return Guarded("ToXml StartOfTie error ", kStartOfTieHandler, [&] {
    const xml::XmlNode pitch = ChildElement(note, "pitch");
    if (!pitch) return xml::XmlNode();
    const uint8_t midi = MidiNote(pitch);
    std::string query = "note[tie]";
    const int16_t staff = ChildNumber16(note, "staff");
    if (staff > 0) query += "[staff='" + std::to_string(staff) + "']";
    const xml::XmlNode measure = note.parentNode();
    // This measure, then the one before it; candidates from the last to the first.
    for (const xml::XmlNode& where :
         {measure, measure.selectSingleNode("preceding-sibling::measure[1]")}) {
      if (!where) continue;
      const xml::XmlNodeList candidates = where.selectNodes(query);
      for (int32_t i = candidates.length() - 1; i >= 0; --i) {
        const xml::XmlNode candidate = candidates.item(i);
        const xml::XmlNode candidatePitch = ChildElement(candidate, "pitch");
        if (!candidatePitch || MidiNote(candidatePitch) != midi) continue;
        if (candidate.selectSingleNode("tie[@type='start']")) return candidate;
        return xml::XmlNode(); // the same pitch ends a tie here: no start to find
      }
    }
    return xml::XmlNode();
  });
}

int16_t ToXml::CheckAppoggiatura(Tgf& tgf, int16_t entryIndex) {
  return Guarded("ToXml CheckAppoggiatura error ", kCheckAppoggiaturaHandler, [&]() -> int16_t {
    Entry* grace = tgf.Entries(entryIndex);
    Entry* next = tgf.Entries(entryIndex + 1);
    if (grace == nullptr || next == nullptr) return 0;
    const auto playable = [](Entry& entry) {
      return (entry.Ef & kEfPerformanceData) && (entry.Ef & kEfNote) && entry.NumNotes >= 1;
    };
    if (!(grace->Ef & kEfGrace) || (next->Ef & kEfGrace)) return 0;
    if (!playable(*grace) || !playable(*next)) return 0;
    PerformanceData graceData, nextData;
    if (!LoadForNote(graceData, grace->Entnum, grace->Notes(1)->NoteID) ||
        !LoadForNote(nextData, next->Entnum, next->Notes(1)->NoteID))
      return 0;
    if (graceData.Stadd < 0 || graceData.Stadd > kAppoggiaturaSlack) return 0;
    if (nextData.Enadd > kAppoggiaturaSlack || next->Actdur == 0) return 0;
    const int32_t a = graceData.Enadd;
    const int32_t b = nextData.Stadd;
    if (a - b > kAppoggiaturaSlack || b - a > kAppoggiaturaSlack) return 0;
    return static_cast<int16_t>(RoundHalfEven(b * 100.0 / next->Actdur));
  });
}

std::string ToXml::FindPrintObject(int16_t layer, int16_t staff, const XmlPart& part) {
  return Guarded("ToXml FindPrintObject error ", kFindPrintObjectHandler, [&] {
    const bool visible = part.LayerVisible.at(staff).at(layer);
    const int16_t notation = part.AlternateNotation.at(staff);
    if (notation == 0 || notation == 6) return std::string(visible ? "" : "no");
    return std::string(visible ? "yes" : "");
  });
}

xml::XmlNode ToXml::LoadNoteheadDetails(int32_t entnum, int16_t noteID, const std::string& font,
                                        int32_t dura, bool option, int16_t& percent) {
  const std::string place = " in entry " + std::to_string(entnum) + ": ";
  return GuardedAt("ToXml LoadNoteheadDetails error ", place, kLoadNoteheadDetailsHandler, [&] {
    double scale = 1.0;
    NoteMods mods;
    if (mods.Load(entnum, 0) && mods.Percent > 0) scale = mods.Percent / 100.0;
    NoteAlterations alterations;
    xml::XmlNode notehead;
    if (LoadForNote(alterations, entnum, noteID)) {
      if (alterations.Percent != 100) scale *= alterations.Percent / 100.0;
      if (alterations.Altnhead != 0)
        notehead = CreateNotehead(static_cast<int16_t>(alterations.Altnhead & 0xFF),
                                  FontOf(alterations.Flag, alterations.Font, font), dura, option);
    }
    percent = static_cast<int16_t>(RoundHalfEven(100.0 * scale));
    return notehead;
  });
}

std::string ToXml::LoadTieAlteration(Entry& entry, Note& note) {
  return Guarded("ToXml LoadTieAlteration error ", kLoadTieAlterationHandler, [&] {
    TieAlteration record;
    if (!LoadForNote(record, entry.Entnum, note.NoteID)) return std::string();
    if (!(record.Flag & kTieDirectionSet)) return std::string();
    return std::string((record.Flag & kTieUnder) ? "under" : "over");
  });
}

const XmlPercussion* ToXml::PercussionOf(const XmlPart& part, int16_t key) {
  return part.Percussion(std::to_string(key));
}

} // namespace ostin
