#pragma once
// Key signature and transposition arithmetic, and key elements of non-traditional keys.
#include <cstdint>

#include "xml/xml_document.h"

namespace ostin {

// The usual diatonic step of a chromatic transposition from -11 to 11; 0 otherwise.
int16_t TransposeDefaultDiatonic(int16_t chromatic);

// What a key needs for a written-to-sounding transposition. A chromatic value outside -11 to
// 11 leaves keyAlter and adjustedAlter as they came.
void TransposeKeySig(int16_t chromatic, int16_t diatonic, int16_t octaveChange, int16_t& keyAlter,
                     int16_t& adjustedAlter, int16_t& steps);

// The packed staff transposition of a transpose element: key alteration in the low six bits,
// steps in the next six.
int16_t TranspositionValue(const xml::XmlNode& transposeElement);

// True when both are key elements with the same children, by tag name and text, in order.
bool KeyMatch(const xml::XmlNode& key1, const xml::XmlNode& key2);

// The key element of a non-traditional key of the document, or an empty node when the key
// has no such form.
xml::XmlNode CreateKeyNonLinear(int16_t keyNumber, const xml::XmlDocument& document);

} // namespace ostin
