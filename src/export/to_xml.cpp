#include "export/to_xml.h"

#include "host/bridge.h"
#include "host/handmade_records.h"
#include "host/records.h"
#include "host/text/fonts.h"
#include "model/arithmetic_defaults.h"
#include "shell/error_log.h"
#include "shell/failure.h"
#include "shell/messages.h"

namespace ostin {

namespace {
constexpr int32_t kUserCancelled = Code(0x80040343);
constexpr int32_t kLoadPartForeign = Code(0x80040344);
constexpr int32_t kInitializeXmlParse = Code(0x8004031D);
constexpr int32_t kInvokeForeign = Code(0x8004031B);
constexpr int32_t kSaveRefused = Code(0x8004058A);
constexpr int32_t kAccessDenied = Code(0x80070005);
constexpr std::string_view kXmlServiceSource = "msxml3.dll";

// Own numbers of the private operations.
constexpr int32_t kInitializeXmlHandler = Code(0x800402D5);
constexpr int32_t kAddNewLinesHandler = Code(0x800402D6);
constexpr int32_t kInitializeMeasureItemsHandler = Code(0x800402D8);
constexpr int32_t kLoadBeamingOptionsHandler = Code(0x800402DA);
constexpr int32_t kLoadDocumentOptionsHandler = Code(0x800402DB);

constexpr int16_t kBeamOptionBit = 0x100;
constexpr int16_t kPreferences = -2;

std::string ParseText(const char* head, const xml::ParseError& error) {
  return std::string(head) + "\r" + error.reason + "\r" + error.url + "\rLine " +
         std::to_string(error.line) + ", position " + std::to_string(error.linepos) + ": " +
         error.srcText;
}
} // namespace

std::string ToXml::DocumentTypeText(bool partwise, const std::string& systemIdentifier) {
  std::string kind = partwise ? "partwise" : "timewise";
  std::string title = partwise ? "Partwise" : "Timewise";
  std::string prefix = systemIdentifier.empty() ? "//C:/musicxml/" : "//" + systemIdentifier;
  return "<?xml version=\"1.0\" standalone=\"no\"?>\r\n"
         "<!DOCTYPE score-" +
         kind +
         " PUBLIC \r\n"
         "\t\"-//Calvimora//DTD MusicXML 0.7b " +
         title +
         "//EN\"\r\n"
         "\t\"" +
         prefix + kind +
         ".dtd\">\r\n"
         "<score-" +
         kind +
         ">\r\n"
         "</score-" +
         kind + ">\r\n";
}

bool ToXml::Invoke(int32_t, int32_t) {
  try {
    Run();
  } catch (...) {
    Failure failure = CurrentFailure();
    Register(failure);
    bool cancelled = failure.IsOwn() && failure.Number == kUserCancelled;
    if (cancelled || MassEdit_.Started) MassEdit_.EndEdit(cancelled);
    CloseEdit();
    if (cancelled) return false;
    if (failure.IsOwn()) {
      if (failure.Description == kInternalError) failure.Description = FormatResString(159);
      throw failure;
    }
    if (failure.Source == kXmlServiceSource && failure.Number == kAccessDenied)
      throw Failure(kSaveRefused, std::string(kPlugInSource), FormatResString(163));
    throw Failure(kInvokeForeign, std::string(kPlugInSource), FormatResString(159));
  }
  return false;
}

void ToXml::Run() {
  WarningFlags = {};
  FinaleVersion = FtxFinaleVersion();
  InitializeXml(true);
  root_ = document_->documentElement();
  // The edit stays open for the whole run, so that layout the run forces is thrown away.
  if (FinaleVersion >= 2003) editOpen_ = FxStartFinaleEdit("Update Layout") != 0;
  NumberOfStaves = FtxCountInstruments(0, -1);
  NumberOfMeasures = static_cast<int16_t>(FtxCountItems(1));
  SystemBreaks.assign(NumberOfMeasures + 1, false);
  int32_t jobSize = NumberOfMeasures * NumberOfStaves + NumberOfMeasures + NumberOfStaves;
  MassEdit_.StartEdit(0, jobSize);
  FinaleChannels_.Initialize();
  ReadLayerPrefs();
  ReadDocumentDefaults();
  LoadBeamingOptions();
  LoadDocumentOptions();
  StemmingUseMetrics = FinaleVersion >= 2004 && DisplayTransposed;
  InitializeHeader();
  InitializeParts();
  if (!MassEdit_.Progress(NumberOfStaves, 0, 0, -1)) {
    // Cancelled at the first check: nothing has been written anywhere.
    CloseEdit();
    MassEdit_.EndEdit(true);
    return;
  }
  InitializeFreezeMusic();
  InitializeMeasures();
  InitializeMeasureItems();
  InitializeLocales();
  for (int16_t part = 1; part <= NumberOfParts; ++part)
    LoadPart(part);
  CleanupInitialTempo();
  // The part objects hold elements of the tree that AddNewLines replaces; let it go.
  XmlParts.clear();
  MeasureElements.clear();
  root_ = xml::XmlNode();
  AddNewLines(*document_);
  root_ = document_->documentElement();
  SaveDocument();
  MassEdit_.EndEdit(false);
  CloseEdit();
}

void ToXml::CloseEdit() {
  if (editOpen_) FxCancelFinaleEdit();
  editOpen_ = false;
}

void ToXml::InitializeXml(bool partwise) {
  Guarded("ToXml InitializeXml error ", kInitializeXmlHandler, [&] {
    document_ = xml::XmlDocument::Create();
    document_->async = false;
    document_->validateOnParse = false;
    document_->resolveExternals = false;
    document_->setProperty("SelectionLanguage", "XPath");
    document_->preserveWhiteSpace = false;
    document_->loadXML(DocumentTypeText(partwise, SystemIdentifier));
    xml::ParseError error = document_->parseError();
    if (error.errorCode != 0)
      throw Failure(kInitializeXmlParse, std::string(kPlugInSource),
                    ParseText("XML initialization parsing error:", error));
  });
}

void ToXml::AddNewLines(xml::XmlDocument& document) {
  Guarded("ToXml AddNewLines error ", kAddNewLinesHandler, [&] {
    // The saved text gets "\r\n" wherever two tags meet, as a reload of the text with the
    // breaks put in would give, without the cost of a reload or of a text node for each.
    document.preserveWhiteSpace = true;
    document.setBreakBetweenTags(true);
  });
}

void ToXml::ReadLayerPrefs() {
  for (int16_t layer = 0; layer < 4; ++layer) {
    // A layer the host keeps no preferences for keeps the defaults.
    if (!LayerPrefs_[layer].Load(layer)) continue;
    if (FinaleVersion >= 2002) {
      LayerCue[layer] = !(LayerPrefs_[layer].Flag & LayerPrefs::kNoCue);
      LayerNoSpacing[layer] = !(LayerPrefs_[layer].Flag & LayerPrefs::kKeepSpacing);
    }
  }
}

void ToXml::ReadDocumentDefaults() {
  WedgeSpread = DefaultWedgeSpread();
  InitialTempo = DefaultTempo();
  OnlyLyricType = OnlyLyricKind();
  EngraverFontSet = EngraverFontSetOf();
  EngraverFontSetNumber() = EngraverFontSet;
  ExtractedPart = FtxExtractedPartIsUsed() != 0;
}

// "chorus", "section" or "verse" when the document has lyrics of exactly that one kind.
std::string ToXml::OnlyLyricKind() {
  constexpr const char* kKinds[] = {"verse", "chorus", "section"};
  std::string only;
  for (int kind : {kVerse, kChorus, kSection}) {
    if (!AnyLyric(kind)) continue;
    if (!only.empty()) return {};
    only = kKinds[kind];
  }
  return only;
}

// The document's number of the font whose "I" stands for a blank; 0 when it has none, so that
// a document without the font still exports.
int16_t ToXml::EngraverFontSetOf() {
  try {
    return FindFont("EngraverFontSet");
  } catch (const Failure& failure) {
    if (!failure.IsOwn()) throw;
    return 0;
  }
}

void ToXml::LoadBeamingOptions() {
  Guarded("ToXml LoadBeamingOptions error ", kLoadBeamingOptionsHandler, [&] {
    Settings41 beams;
    BeamOption = beams.Load(kPreferences, 0) && (beams.BeamFlags & kBeamOptionBit);
  });
}

void ToXml::LoadDocumentOptions() {
  Guarded("ToXml LoadDocumentOptions error ", kLoadDocumentOptionsHandler, [&] {
    Settings12 display;
    if (display.Load(kPreferences, 0)) {
      KeyCancelOutgoing = display.KeysigCancelOutgoing == 1;
      KeyModeChange = display.KeysigModeChange == 1;
      DisplayTransposed = display.DisplayTransposed == 1;
    }
    Settings44 grace;
    GraceAlwaysSlash = grace.Load(kPreferences, 0) && grace.GraceAlwaysSlash == 1;
  });
}

void ToXml::CheckProgress(int16_t increment, int16_t instrument, int16_t measure) {
  if (!MassEdit_.Progress(increment, instrument, measure, -1))
    throw Failure(kUserCancelled, std::string(kPlugInSource), "User cancelled");
}

void ToXml::LoadPart(int16_t partIndex) {
  XmlPart& part = *XmlParts.at(partIndex);
  try {
    part.Measure = 1;
    part.MeasureNumber = "1";
    Measure = 1;
    MeasureNumber = "1";
    OpenMeasureStyle.assign(part.Staves() + 1, std::string());
    InitializePartTables(part);
    LoadPartMeasures(part);
    ConvertDurations(part);
    part.OptimizeVoices();
    PruneInstruments(part);
  } catch (...) {
    RaiseAtPosition(partIndex, MeasureNumber, kLoadPartForeign);
  }
}

// Gives the failure in flight the place in the score where it happened.
void ToXml::RaiseAtPosition(int16_t partIndex, const std::string& measureNumber,
                            int32_t foreignNumber) {
  Failure failure = CurrentFailure();
  Register(failure);
  std::string where = FormatResString(157, {std::to_string(partIndex), measureNumber});
  if (!failure.IsOwn()) throw Failure(foreignNumber, std::string(kPlugInSource), where);
  if (failure.Description == kInternalError) failure.Description = where;
  throw failure;
}

void ToXml::LoadPartMeasures(XmlPart& part) {
  for (int16_t measure = 1; measure <= NumberOfMeasures; ++measure) {
    part.Measure = measure;
    part.MeasureNumber = std::to_string(measure);
    Measure = measure;
    MeasureNumber = part.MeasureNumber;
    LoadMeasure(part);
    CheckProgress(part.Staves(), part.StartStaff, measure);
  }
}

void ToXml::InitializeMeasureItems() {
  Guarded("ToXml InitializeMeasureItems error ", kInitializeMeasureItemsHandler, [] {
    // Shapes, expressions and texts of each staff slot are collected here.
  });
}

xml::XmlNode ToXml::Element(const std::string& name, const std::string& text) {
  xml::XmlNode element = document_->createElement(name);
  if (!text.empty()) element.text(text);
  return element;
}

void ToXml::SaveDocument() {
  document_->save(FileName);
}

} // namespace ostin
