<!--
  Ostin Light: document types of MusicXML 4.0, everything but the two roots.

  Read by partwise.dtd and timewise.dtd, which differ only in whether parts hold measures or
  measures hold parts. The areas come in the order their declarations need each other, after
  the named Latin-1 characters that texts may use.
-->

<!ENTITY % latin1.ent SYSTEM "latin1.ent">
%latin1.ent;
<!ENTITY % common.mod SYSTEM "common.mod">
%common.mod;
<!ENTITY % header.mod SYSTEM "header.mod">
%header.mod;
<!ENTITY % attributes.mod SYSTEM "attributes.mod">
%attributes.mod;
<!ENTITY % note.mod SYSTEM "note.mod">
%note.mod;
<!ENTITY % direction.mod SYSTEM "direction.mod">
%direction.mod;
<!ENTITY % measure.mod SYSTEM "measure.mod">
%measure.mod;

<!-- The attributes of a part: the score-part it belongs to. -->
<!ENTITY % part-attributes "id IDREF #REQUIRED">

<!-- The attributes of a measure: its number as a text, the number shown, whether it is an
     incomplete measure outside the count, whether it may be broken across systems, and its
     width. -->
<!ENTITY % measure-attributes
  "number CDATA #REQUIRED
   text CDATA #IMPLIED
   implicit %yes-no; #IMPLIED
   non-controlling %yes-no; #IMPLIED
   width %tenths; #IMPLIED
   %optional-unique-id;">
