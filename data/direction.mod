<!--
  Ostin Light: document types of MusicXML 4.0, directions.

  A direction is a mark tied to a place in the measure rather than to one note: words,
  dynamics, wedges, pedals, tempo marks, octave lines, rehearsal marks and the like. Also the
  sound element, which says how the score plays at that place, and listening, which says how
  a program following a performer should behave.
-->

<!-- The marks, the offset of the sound from the written place, and the sound itself. -->
<!ELEMENT direction
  (direction-type+, offset?, %editorial-voice-direction;, staff?, sound?, listening?)>
<!ATTLIST direction
  %placement;
  directive %yes-no; #IMPLIED
  %system-relation;
  %optional-unique-id;>

<!-- One kind of mark; some kinds come in runs (several words, several dynamics). -->
<!ELEMENT direction-type
  (rehearsal+ | segno+ | coda+ | (words | symbol)+ | wedge | dynamics+ | dashes | bracket |
   pedal | metronome | octave-shift | harp-pedals | damp | damp-all | eyeglasses |
   string-mute | scordatura | image | principal-voice | percussion+ |
   accordion-registration | staff-divide | other-direction)>
<!ATTLIST direction-type %optional-unique-id;>

<!-- Where the sound of a direction starts, in divisions from its written place. -->
<!ELEMENT offset (#PCDATA)>
<!ATTLIST offset sound %yes-no; #IMPLIED>

<!-- ===================================================================================== -->
<!-- Texts and symbols                                                                      -->
<!-- ===================================================================================== -->

<!ELEMENT rehearsal (#PCDATA)>
<!ATTLIST rehearsal %text-formatting; %optional-unique-id;>
<!ELEMENT words (#PCDATA)>
<!ATTLIST words %text-formatting; %optional-unique-id;>
<!-- Glyph names of the music font, joined into one mark. -->
<!ELEMENT symbol (#PCDATA)>
<!ATTLIST symbol %symbol-formatting; %optional-unique-id;>
<!ELEMENT image EMPTY>
<!ATTLIST image %image-attributes; %optional-unique-id;>

<!-- ===================================================================================== -->
<!-- Lines                                                                                  -->
<!-- ===================================================================================== -->

<!-- Hairpins: spread is the opening in tenths; niente adds the small circle. -->
<!ELEMENT wedge EMPTY>
<!ATTLIST wedge
  type (crescendo | diminuendo | stop | continue) #REQUIRED
  number %number-level; #IMPLIED
  spread %tenths; #IMPLIED
  niente %yes-no; #IMPLIED
  %line-type; %dashed-formatting; %position; %color; %optional-unique-id;>

<!ELEMENT dashes EMPTY>
<!ATTLIST dashes
  type %start-stop-continue; #REQUIRED
  number %number-level; #IMPLIED
  %dashed-formatting; %print-style; %optional-unique-id;>

<!-- A bracket line; line-end says how each end is drawn. -->
<!ELEMENT bracket EMPTY>
<!ATTLIST bracket
  type %start-stop-continue; #REQUIRED
  number %number-level; #IMPLIED
  line-end (up | down | both | arrow | none) #REQUIRED
  end-length %tenths; #IMPLIED
  %line-type; %dashed-formatting; %print-style; %optional-unique-id;>

<!-- Piano pedals, drawn as signs, as lines, or both. -->
<!ELEMENT pedal EMPTY>
<!ATTLIST pedal
  type (start | stop | sostenuto | change | continue | discontinue | resume) #REQUIRED
  number %number-level; #IMPLIED
  line %yes-no; #IMPLIED
  sign %yes-no; #IMPLIED
  abbreviated %yes-no; #IMPLIED
  %print-style-align; %optional-unique-id;>

<!-- 8va and its kin: size is 8, 15 or 22. -->
<!ELEMENT octave-shift EMPTY>
<!ATTLIST octave-shift
  type (up | down | stop | continue) #REQUIRED
  number %number-level; #IMPLIED
  size CDATA "8"
  %dashed-formatting; %print-style; %optional-unique-id;>

<!-- ===================================================================================== -->
<!-- Tempo                                                                                  -->
<!-- ===================================================================================== -->

<!-- Either a note value equal to a speed or to another note value, or (for swing and
     metric modulation) groups of notes related to each other. -->
<!ENTITY % beat-unit-group "(beat-unit, beat-unit-dot*, beat-unit-tied*)">
<!ELEMENT metronome
  ((%beat-unit-group;, (per-minute | %beat-unit-group;)) |
   (metronome-arrows?, metronome-note+, (metronome-relation, metronome-note+)?))>
<!ATTLIST metronome
  %print-style-align; %justify;
  parentheses %yes-no; #IMPLIED
  %optional-unique-id;>
<!ELEMENT beat-unit (#PCDATA)>
<!ELEMENT beat-unit-dot EMPTY>
<!ELEMENT beat-unit-tied (beat-unit, beat-unit-dot*)>
<!ELEMENT per-minute (#PCDATA)>
<!ATTLIST per-minute %font;>
<!ELEMENT metronome-arrows EMPTY>
<!ELEMENT metronome-note
  (metronome-type, metronome-dot*, metronome-beam*, metronome-tied?, metronome-tuplet?)>
<!ELEMENT metronome-type (#PCDATA)>
<!ELEMENT metronome-dot EMPTY>
<!ELEMENT metronome-beam (#PCDATA)>
<!ATTLIST metronome-beam number %beam-level; "1">
<!ELEMENT metronome-tied EMPTY>
<!ATTLIST metronome-tied type %start-stop; #REQUIRED>
<!ELEMENT metronome-tuplet (actual-notes, normal-notes, (normal-type, normal-dot*)?)>
<!ATTLIST metronome-tuplet
  type %start-stop; #REQUIRED
  bracket %yes-no; #IMPLIED
  show-number (actual | both | none) #IMPLIED>
<!ELEMENT metronome-relation (#PCDATA)>

<!-- ===================================================================================== -->
<!-- Instrument-specific marks                                                              -->
<!-- ===================================================================================== -->

<!-- Harp pedal settings, one per string step. -->
<!ELEMENT harp-pedals (pedal-tuning)+>
<!ATTLIST harp-pedals %print-style-align; %optional-unique-id;>
<!ELEMENT pedal-tuning (pedal-step, pedal-alter)>
<!ELEMENT pedal-step (#PCDATA)>
<!ELEMENT pedal-alter (#PCDATA)>

<!ELEMENT damp EMPTY>
<!ATTLIST damp %print-style-align; %optional-unique-id;>
<!ELEMENT damp-all EMPTY>
<!ATTLIST damp-all %print-style-align; %optional-unique-id;>
<!ELEMENT eyeglasses EMPTY>
<!ATTLIST eyeglasses %print-style-align; %optional-unique-id;>

<!ELEMENT string-mute EMPTY>
<!ATTLIST string-mute
  type (on | off) #REQUIRED
  %print-style-align; %optional-unique-id;>

<!-- Retuned strings, each with its new pitch. -->
<!ELEMENT scordatura (accord+)>
<!ATTLIST scordatura %optional-unique-id;>
<!ELEMENT accord %tuning;>
<!ATTLIST accord string CDATA #REQUIRED>

<!-- Hauptstimme and Nebenstimme signs. -->
<!ELEMENT principal-voice (#PCDATA)>
<!ATTLIST principal-voice
  type %start-stop; #REQUIRED
  symbol (Hauptstimme | Nebenstimme | plain | none) #REQUIRED
  %print-style-align; %optional-unique-id;>

<!-- Accordion registers: dots in the high, middle (1 to 3) and low rows. -->
<!ELEMENT accordion-registration (accordion-high?, accordion-middle?, accordion-low?)>
<!ATTLIST accordion-registration %print-style-align; %optional-unique-id;>
<!ELEMENT accordion-high EMPTY>
<!ELEMENT accordion-middle (#PCDATA)>
<!ELEMENT accordion-low EMPTY>

<!-- A sign that a staff divides into two or more, or joins again. -->
<!ELEMENT staff-divide EMPTY>
<!ATTLIST staff-divide
  type (down | up | up-down) #REQUIRED
  %print-style-align; %optional-unique-id;>

<!ELEMENT other-direction (#PCDATA)>
<!ATTLIST other-direction
  %print-object; %print-style-align; %smufl; %optional-unique-id;>

<!-- ===================================================================================== -->
<!-- Percussion pictograms                                                                  -->
<!-- ===================================================================================== -->

<!ELEMENT percussion
  (glass | metal | wood | pitched | membrane | effect | timpani | beater | stick |
   stick-location | other-percussion)>
<!ATTLIST percussion %print-style-align; %enclosure; %optional-unique-id;>
<!ELEMENT glass (#PCDATA)>
<!ATTLIST glass %smufl;>
<!ELEMENT metal (#PCDATA)>
<!ATTLIST metal %smufl;>
<!ELEMENT wood (#PCDATA)>
<!ATTLIST wood %smufl;>
<!ELEMENT pitched (#PCDATA)>
<!ATTLIST pitched %smufl;>
<!ELEMENT membrane (#PCDATA)>
<!ATTLIST membrane %smufl;>
<!ELEMENT effect (#PCDATA)>
<!ATTLIST effect %smufl;>
<!ELEMENT timpani EMPTY>
<!ATTLIST timpani %smufl;>
<!ELEMENT beater (#PCDATA)>
<!ATTLIST beater tip (up | down | left | right | northwest | northeast | southeast |
                      southwest) #IMPLIED>
<!ELEMENT stick (stick-type, stick-material)>
<!ATTLIST stick
  tip (up | down | left | right | northwest | northeast | southeast | southwest) #IMPLIED
  parentheses %yes-no; #IMPLIED
  dashed-circle %yes-no; #IMPLIED>
<!ELEMENT stick-type (#PCDATA)>
<!ELEMENT stick-material (#PCDATA)>
<!ELEMENT stick-location (#PCDATA)>
<!ELEMENT other-percussion (#PCDATA)>
<!ATTLIST other-percussion %smufl;>

<!-- ===================================================================================== -->
<!-- Sound                                                                                  -->
<!-- ===================================================================================== -->

<!-- Playback at this place: tempo, dynamics, jumps, pedals, instrument changes, swing. -->
<!ELEMENT sound
  ((instrument-change | midi-device | midi-instrument | play)*, swing?, offset?)>
<!ATTLIST sound
  tempo CDATA #IMPLIED
  dynamics CDATA #IMPLIED
  dacapo %yes-no; #IMPLIED
  segno CDATA #IMPLIED
  dalsegno CDATA #IMPLIED
  coda CDATA #IMPLIED
  tocoda CDATA #IMPLIED
  divisions CDATA #IMPLIED
  forward-repeat %yes-no; #IMPLIED
  fine CDATA #IMPLIED
  %time-only;
  pizzicato %yes-no; #IMPLIED
  pan CDATA #IMPLIED
  elevation CDATA #IMPLIED
  damper-pedal CDATA #IMPLIED
  soft-pedal CDATA #IMPLIED
  sostenuto-pedal CDATA #IMPLIED
  %optional-unique-id;>

<!-- The score instrument whose sound changes. -->
<!ELEMENT instrument-change %virtual-instrument-data;>
<!ATTLIST instrument-change id IDREF #REQUIRED>

<!-- Straight, or swung in the ratio first : second on the note type given. -->
<!ELEMENT swing ((straight | (first, second, swing-type?)), swing-style?)>
<!ELEMENT straight EMPTY>
<!ELEMENT first (#PCDATA)>
<!ELEMENT second (#PCDATA)>
<!ELEMENT swing-type (#PCDATA)>
<!ELEMENT swing-style (#PCDATA)>

<!-- ===================================================================================== -->
<!-- Listening                                                                              -->
<!-- ===================================================================================== -->

<!ELEMENT listening ((sync | other-listening)+, offset?)>
<!ELEMENT sync EMPTY>
<!ATTLIST sync
  type (none | tempo | mostly-tempo | mostly-event | event | always-event) #REQUIRED
  latency CDATA #IMPLIED
  player IDREF #IMPLIED
  %time-only;>
<!ELEMENT other-listening (#PCDATA)>
<!ATTLIST other-listening
  type CDATA #REQUIRED
  player IDREF #IMPLIED
  %time-only;>
