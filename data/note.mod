<!--
  Ostin Light: document types of MusicXML 4.0, notes.

  A note (or rest, or unpitched note) with everything hung on it: its pitch and duration, how
  it looks, its beams, its notations (ties, slurs, tuplets, ornaments, technical marks,
  articulations and more), its lyrics and how it is played. Also backup and forward, which
  move the time cursor between voices.
-->

<!-- ===================================================================================== -->
<!-- The note                                                                               -->
<!-- ===================================================================================== -->

<!-- The sounding part of a note: maybe in a chord with the note before it, and a pitch, an
     unpitched position or a rest. -->
<!ENTITY % full-note "(chord?, (pitch | unpitched | rest))">

<!-- A grace note has no duration; a cue note has one but no ties; any other note has a
     duration and up to two ties (stop and start). -->
<!ELEMENT note
  (((grace, ((%full-note;, (tie, tie?)?) | (cue, %full-note;))) |
    (cue, %full-note;, duration) |
    (%full-note;, duration, (tie, tie?)?)),
   instrument*, %editorial-voice;, type?, dot*, accidental?, time-modification?, stem?,
   notehead?, notehead-text?, staff?, beam*, notations*, lyric*, play?, listen?)>
<!ATTLIST note
  %print-style; %printout;
  print-leger %yes-no; #IMPLIED
  dynamics CDATA #IMPLIED
  end-dynamics CDATA #IMPLIED
  attack CDATA #IMPLIED
  release CDATA #IMPLIED
  %time-only;
  pizzicato %yes-no; #IMPLIED
  %optional-unique-id;>

<!-- Grace notes may take time from the notes around them, or make time of their own. -->
<!ELEMENT grace EMPTY>
<!ATTLIST grace
  steal-time-previous CDATA #IMPLIED
  steal-time-following CDATA #IMPLIED
  make-time CDATA #IMPLIED
  slash %yes-no; #IMPLIED>
<!ELEMENT cue EMPTY>
<!ELEMENT chord EMPTY>

<!ELEMENT pitch (step, alter?, octave)>
<!ELEMENT step (#PCDATA)>
<!ELEMENT alter (#PCDATA)>
<!ELEMENT octave (#PCDATA)>
<!-- Unpitched notes and rests may give the staff position they are drawn at. -->
<!ELEMENT unpitched ((display-step, display-octave)?)>
<!ELEMENT rest ((display-step, display-octave)?)>
<!ATTLIST rest measure %yes-no; #IMPLIED>
<!ELEMENT display-step (#PCDATA)>
<!ELEMENT display-octave (#PCDATA)>

<!ELEMENT duration (#PCDATA)>
<!-- The sound of a tie; the drawn tie is tied, among the notations. -->
<!ELEMENT tie EMPTY>
<!ATTLIST tie
  type %start-stop; #REQUIRED
  %time-only;>

<!-- The score instrument (of the part) this note is played on. -->
<!ELEMENT instrument EMPTY>
<!ATTLIST instrument id IDREF #REQUIRED>

<!-- The written value: whole, half, quarter, eighth and so on. -->
<!ELEMENT type (#PCDATA)>
<!ATTLIST type size (full | cue | grace-cue | large) #IMPLIED>
<!ELEMENT dot EMPTY>
<!ATTLIST dot %print-style; %placement;>

<!ELEMENT accidental (#PCDATA)>
<!ATTLIST accidental
  cautionary %yes-no; #IMPLIED
  editorial %yes-no; #IMPLIED
  %level-display; %print-style; %smufl;>

<!-- A tuplet ratio on the note itself: so many notes in the time of so many. -->
<!ELEMENT time-modification (actual-notes, normal-notes, (normal-type, normal-dot*)?)>

<!ELEMENT stem (#PCDATA)>
<!ATTLIST stem %position; %color;>

<!ELEMENT notehead (#PCDATA)>
<!ATTLIST notehead
  filled %yes-no; #IMPLIED
  parentheses %yes-no; #IMPLIED
  %font; %color; %smufl;>
<!-- Text drawn inside the notehead. -->
<!ELEMENT notehead-text ((display-text | accidental-text)+)>

<!-- Begin, continue, end, forward hook or backward hook, for beam level number. -->
<!ELEMENT beam (#PCDATA)>
<!ATTLIST beam
  number %beam-level; "1"
  repeater %yes-no; #IMPLIED
  fan (accel | rit | none) #IMPLIED
  %color; %optional-unique-id;>

<!-- ===================================================================================== -->
<!-- Notations                                                                              -->
<!-- ===================================================================================== -->

<!ELEMENT notations
  (%editorial;,
   (tied | slur | tuplet | glissando | slide | ornaments | technical | articulations |
    dynamics | fermata | arpeggiate | non-arpeggiate | accidental-mark | other-notation)*)>
<!ATTLIST notations %print-object; %optional-unique-id;>

<!-- The shared look of ties and slurs. -->
<!ENTITY % curve-attributes
  "number %number-level; #IMPLIED
   %line-type; %dashed-formatting; %position; %placement; %orientation; %bezier; %color;
   %optional-unique-id;">

<!ELEMENT tied EMPTY>
<!ATTLIST tied
  type (start | stop | continue | let-ring) #REQUIRED
  %curve-attributes;>

<!ELEMENT slur EMPTY>
<!ATTLIST slur
  type %start-stop-continue; #REQUIRED
  %curve-attributes;>

<!-- The drawn tuplet: bracket, number and note type shown over the notes. -->
<!ELEMENT tuplet (tuplet-actual?, tuplet-normal?)>
<!ATTLIST tuplet
  type %start-stop; #REQUIRED
  number %number-level; #IMPLIED
  bracket %yes-no; #IMPLIED
  show-number (actual | both | none) #IMPLIED
  show-type (actual | both | none) #IMPLIED
  %line-shape; %position; %placement; %optional-unique-id;>
<!ENTITY % tuplet-portion "(tuplet-number?, tuplet-type?, tuplet-dot*)">
<!ELEMENT tuplet-actual %tuplet-portion;>
<!ELEMENT tuplet-normal %tuplet-portion;>
<!ELEMENT tuplet-number (#PCDATA)>
<!ATTLIST tuplet-number %font; %color;>
<!ELEMENT tuplet-type (#PCDATA)>
<!ATTLIST tuplet-type %font; %color;>
<!ELEMENT tuplet-dot EMPTY>
<!ATTLIST tuplet-dot %font; %color;>

<!-- Glissandi are drawn wavy or straight between two notes; slides are straight and
     sound like a portamento. The text is what is written along the line. -->
<!ELEMENT glissando (#PCDATA)>
<!ATTLIST glissando
  type %start-stop; #REQUIRED
  number %number-level; "1"
  %line-type; %dashed-formatting; %print-style; %optional-unique-id;>
<!ELEMENT slide (#PCDATA)>
<!ATTLIST slide
  type %start-stop; #REQUIRED
  number %number-level; "1"
  %line-type; %dashed-formatting; %print-style; %bend-sound; %optional-unique-id;>

<!ELEMENT arpeggiate EMPTY>
<!ATTLIST arpeggiate
  number %number-level; #IMPLIED
  direction %up-down; #IMPLIED
  unbroken %yes-no; #IMPLIED
  %position; %placement; %color; %optional-unique-id;>
<!-- A bracket that says the chord is not rolled; top and bottom mark its two ends. -->
<!ELEMENT non-arpeggiate EMPTY>
<!ATTLIST non-arpeggiate
  type %top-bottom; #REQUIRED
  number %number-level; #IMPLIED
  %position; %placement; %color; %optional-unique-id;>

<!-- An accidental above or below a note or an ornament. -->
<!ELEMENT accidental-mark (#PCDATA)>
<!ATTLIST accidental-mark
  %level-display; %print-style; %placement; %smufl; %optional-unique-id;>

<!ELEMENT other-notation (#PCDATA)>
<!ATTLIST other-notation
  type %start-stop-single; #REQUIRED
  number %number-level; "1"
  %print-object; %print-style; %placement; %smufl; %optional-unique-id;>

<!-- ===================================================================================== -->
<!-- Ornaments                                                                              -->
<!-- ===================================================================================== -->

<!-- Each ornament may have accidentals above or below it. -->
<!ELEMENT ornaments
  (((trill-mark | turn | delayed-turn | inverted-turn | delayed-inverted-turn |
     vertical-turn | inverted-vertical-turn | shake | wavy-line | mordent |
     inverted-mordent | schleifer | tremolo | haydn | other-ornament),
    accidental-mark*)*)>
<!ATTLIST ornaments %optional-unique-id;>

<!ENTITY % ornament-attributes "%print-style; %placement; %trill-sound;">
<!ENTITY % turn-attributes "%ornament-attributes; slash %yes-no; #IMPLIED">

<!ELEMENT trill-mark EMPTY>
<!ATTLIST trill-mark %ornament-attributes;>
<!ELEMENT turn EMPTY>
<!ATTLIST turn %turn-attributes;>
<!ELEMENT delayed-turn EMPTY>
<!ATTLIST delayed-turn %turn-attributes;>
<!ELEMENT inverted-turn EMPTY>
<!ATTLIST inverted-turn %turn-attributes;>
<!ELEMENT delayed-inverted-turn EMPTY>
<!ATTLIST delayed-inverted-turn %turn-attributes;>
<!ELEMENT vertical-turn EMPTY>
<!ATTLIST vertical-turn %ornament-attributes;>
<!ELEMENT inverted-vertical-turn EMPTY>
<!ATTLIST inverted-vertical-turn %ornament-attributes;>
<!ELEMENT shake EMPTY>
<!ATTLIST shake %ornament-attributes;>

<!-- Mordents may be long, and may approach or leave from above or below. -->
<!ENTITY % mordent-attributes
  "long %yes-no; #IMPLIED
   approach %above-below; #IMPLIED
   departure %above-below; #IMPLIED
   %ornament-attributes;">
<!ELEMENT mordent EMPTY>
<!ATTLIST mordent %mordent-attributes;>
<!ELEMENT inverted-mordent EMPTY>
<!ATTLIST inverted-mordent %mordent-attributes;>

<!ELEMENT schleifer EMPTY>
<!ATTLIST schleifer %print-style; %placement;>
<!-- The number of tremolo marks; single on one note, start and stop across two. -->
<!ELEMENT tremolo (#PCDATA)>
<!ATTLIST tremolo
  type (start | stop | single | unmeasured) "single"
  %print-style; %placement; %smufl;>
<!ELEMENT haydn EMPTY>
<!ATTLIST haydn %ornament-attributes;>
<!ELEMENT other-ornament (#PCDATA)>
<!ATTLIST other-ornament %print-style; %placement; %smufl;>

<!-- ===================================================================================== -->
<!-- Technical marks                                                                        -->
<!-- ===================================================================================== -->

<!ELEMENT technical
  ((up-bow | down-bow | harmonic | open-string | thumb-position | fingering | pluck |
    double-tongue | triple-tongue | stopped | snap-pizzicato | fret | string | hammer-on |
    pull-off | bend | tap | heel | toe | fingernails | hole | arrow | handbell |
    brass-bend | flip | smear | open | half-muted | harmon-mute | golpe |
    other-technical)*)>
<!ATTLIST technical %optional-unique-id;>

<!-- Marks that are only a symbol at a place. -->
<!ENTITY % placed-mark "%print-style; %placement;">
<!ENTITY % placed-glyph "%print-style; %placement; %smufl;">

<!ELEMENT up-bow EMPTY>
<!ATTLIST up-bow %placed-mark;>
<!ELEMENT down-bow EMPTY>
<!ATTLIST down-bow %placed-mark;>
<!ELEMENT open-string EMPTY>
<!ATTLIST open-string %placed-mark;>
<!ELEMENT thumb-position EMPTY>
<!ATTLIST thumb-position %placed-mark;>
<!ELEMENT double-tongue EMPTY>
<!ATTLIST double-tongue %placed-mark;>
<!ELEMENT triple-tongue EMPTY>
<!ATTLIST triple-tongue %placed-mark;>
<!ELEMENT snap-pizzicato EMPTY>
<!ATTLIST snap-pizzicato %placed-mark;>
<!ELEMENT fingernails EMPTY>
<!ATTLIST fingernails %placed-mark;>
<!ELEMENT brass-bend EMPTY>
<!ATTLIST brass-bend %placed-mark;>
<!ELEMENT flip EMPTY>
<!ATTLIST flip %placed-mark;>
<!ELEMENT smear EMPTY>
<!ATTLIST smear %placed-mark;>
<!ELEMENT golpe EMPTY>
<!ATTLIST golpe %placed-mark;>
<!ELEMENT stopped EMPTY>
<!ATTLIST stopped %placed-glyph;>
<!ELEMENT open EMPTY>
<!ATTLIST open %placed-glyph;>
<!ELEMENT half-muted EMPTY>
<!ATTLIST half-muted %placed-glyph;>

<!-- A harmonic: natural or artificial, and which pitch the note stands for. -->
<!ELEMENT harmonic
  ((natural | artificial)?, (base-pitch | touching-pitch | sounding-pitch)?)>
<!ATTLIST harmonic %print-object; %placed-mark;>
<!ELEMENT natural EMPTY>
<!ELEMENT artificial EMPTY>
<!ELEMENT base-pitch EMPTY>
<!ELEMENT touching-pitch EMPTY>
<!ELEMENT sounding-pitch EMPTY>

<!-- The plucking finger of a guitar hand: p, i, m, a and so on. -->
<!ELEMENT pluck (#PCDATA)>
<!ATTLIST pluck %placed-mark;>

<!-- Hammer-ons and pull-offs join two notes; the text is the letter shown. -->
<!ELEMENT hammer-on (#PCDATA)>
<!ATTLIST hammer-on
  type %start-stop; #REQUIRED
  number %number-level; "1"
  %placed-mark;>
<!ELEMENT pull-off (#PCDATA)>
<!ATTLIST pull-off
  type %start-stop; #REQUIRED
  number %number-level; "1"
  %placed-mark;>

<!-- A string bend by so many semitones, maybe before the note or released. -->
<!ELEMENT bend (bend-alter, (pre-bend | release)?, with-bar?)>
<!ATTLIST bend
  shape (angled | curved) #IMPLIED
  %print-style; %bend-sound;>
<!ELEMENT bend-alter (#PCDATA)>
<!ELEMENT pre-bend EMPTY>
<!ELEMENT release EMPTY>
<!ATTLIST release offset CDATA #IMPLIED>
<!ELEMENT with-bar (#PCDATA)>
<!ATTLIST with-bar %placed-mark;>

<!ELEMENT tap (#PCDATA)>
<!ATTLIST tap
  hand %left-right; #IMPLIED
  %placed-mark;>
<!ELEMENT heel EMPTY>
<!ATTLIST heel
  substitution %yes-no; #IMPLIED
  %placed-mark;>
<!ELEMENT toe EMPTY>
<!ATTLIST toe
  substitution %yes-no; #IMPLIED
  %placed-mark;>

<!-- A woodwind or brass hole, open, closed or half closed. -->
<!ELEMENT hole (hole-type?, hole-closed, hole-shape?)>
<!ATTLIST hole %placed-mark;>
<!ELEMENT hole-type (#PCDATA)>
<!ELEMENT hole-closed (#PCDATA)>
<!ATTLIST hole-closed location (right | bottom | left | top) #IMPLIED>
<!ELEMENT hole-shape (#PCDATA)>

<!-- A straight arrow with its direction, style and head, or a circular one. -->
<!ELEMENT arrow ((arrow-direction, arrow-style?, arrowhead?) | circular-arrow)>
<!ATTLIST arrow %placed-glyph;>
<!ELEMENT arrow-direction (#PCDATA)>
<!ELEMENT arrow-style (#PCDATA)>
<!ELEMENT arrowhead EMPTY>
<!ELEMENT circular-arrow (#PCDATA)>

<!ELEMENT handbell (#PCDATA)>
<!ATTLIST handbell %placed-mark;>

<!ELEMENT harmon-mute (harmon-closed)>
<!ATTLIST harmon-mute %placed-mark;>
<!ELEMENT harmon-closed (#PCDATA)>
<!ATTLIST harmon-closed location (right | bottom | left | top) #IMPLIED>

<!ELEMENT other-technical (#PCDATA)>
<!ATTLIST other-technical %placed-glyph;>

<!-- ===================================================================================== -->
<!-- Articulations                                                                          -->
<!-- ===================================================================================== -->

<!ELEMENT articulations
  ((accent | strong-accent | staccato | tenuto | detached-legato | staccatissimo |
    spiccato | scoop | plop | doit | falloff | breath-mark | caesura | stress | unstress |
    soft-accent | other-articulation)*)>
<!ATTLIST articulations %optional-unique-id;>

<!ELEMENT accent EMPTY>
<!ATTLIST accent %placed-mark;>
<!ELEMENT strong-accent EMPTY>
<!ATTLIST strong-accent
  type %up-down; "up"
  %placed-mark;>
<!ELEMENT staccato EMPTY>
<!ATTLIST staccato %placed-mark;>
<!ELEMENT tenuto EMPTY>
<!ATTLIST tenuto %placed-mark;>
<!ELEMENT detached-legato EMPTY>
<!ATTLIST detached-legato %placed-mark;>
<!ELEMENT staccatissimo EMPTY>
<!ATTLIST staccatissimo %placed-mark;>
<!ELEMENT spiccato EMPTY>
<!ATTLIST spiccato %placed-mark;>
<!ELEMENT stress EMPTY>
<!ATTLIST stress %placed-mark;>
<!ELEMENT unstress EMPTY>
<!ATTLIST unstress %placed-mark;>
<!ELEMENT soft-accent EMPTY>
<!ATTLIST soft-accent %placed-mark;>

<!-- Jazz falls and rises, drawn as lines into or out of the note. -->
<!ENTITY % jazz-line "%line-shape; %line-type; %line-length; %dashed-formatting; %placed-mark;">
<!ELEMENT scoop EMPTY>
<!ATTLIST scoop %jazz-line;>
<!ELEMENT plop EMPTY>
<!ATTLIST plop %jazz-line;>
<!ELEMENT doit EMPTY>
<!ATTLIST doit %jazz-line;>
<!ELEMENT falloff EMPTY>
<!ATTLIST falloff %jazz-line;>

<!-- The text names the sign: comma, tick, upbow, salzedo, or empty. -->
<!ELEMENT breath-mark (#PCDATA)>
<!ATTLIST breath-mark %placed-mark;>
<!ELEMENT caesura (#PCDATA)>
<!ATTLIST caesura %placed-mark;>

<!ELEMENT other-articulation (#PCDATA)>
<!ATTLIST other-articulation %placed-glyph;>

<!-- ===================================================================================== -->
<!-- Lyrics                                                                                 -->
<!-- ===================================================================================== -->

<!-- Syllables joined by elisions, maybe extended; or only an extension, laughing or
     humming. -->
<!ELEMENT lyric
  ((((syllabic?, text), (elision?, syllabic?, text)*, extend?) | extend | laughing | humming),
   end-line?, end-paragraph?, %editorial;)>
<!ATTLIST lyric
  number NMTOKEN #IMPLIED
  name CDATA #IMPLIED
  %justify; %position; %placement; %color; %print-object; %time-only;
  %optional-unique-id;>
<!ELEMENT syllabic (#PCDATA)>
<!ELEMENT text (#PCDATA)>
<!ATTLIST text
  %font; %color; %text-decoration; %text-rotation; %letter-spacing;
  xml:lang CDATA #IMPLIED
  %text-direction;>
<!ELEMENT elision (#PCDATA)>
<!ATTLIST elision %font; %color; %smufl;>
<!ELEMENT extend EMPTY>
<!ATTLIST extend
  type %start-stop-continue; #IMPLIED
  %print-style;>
<!ELEMENT laughing EMPTY>
<!ELEMENT humming EMPTY>
<!ELEMENT end-line EMPTY>
<!ELEMENT end-paragraph EMPTY>

<!-- ===================================================================================== -->
<!-- Listening: how a performer or a program should follow this note                       -->
<!-- ===================================================================================== -->

<!ELEMENT listen ((assess | wait | other-listen)+)>
<!ATTLIST listen %optional-unique-id;>
<!ENTITY % listen-attributes
  "player IDREF #IMPLIED
   %time-only;">
<!ELEMENT assess EMPTY>
<!ATTLIST assess
  type %yes-no; #REQUIRED
  %listen-attributes;>
<!ELEMENT wait EMPTY>
<!ATTLIST wait %listen-attributes;>
<!ELEMENT other-listen (#PCDATA)>
<!ATTLIST other-listen
  type CDATA #REQUIRED
  %listen-attributes;>

<!-- ===================================================================================== -->
<!-- Moving the time cursor                                                                 -->
<!-- ===================================================================================== -->

<!ELEMENT backup (duration, %editorial;)>
<!ELEMENT forward (duration, %editorial-voice;, staff?)>
