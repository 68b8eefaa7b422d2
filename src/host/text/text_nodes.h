#pragma once
// Text into the elements of a MusicXML document.
#include <cstdint>
#include <string>

#include "xml/xml_document.h"

namespace ostin {

// Appends text to parent: one text node with locale 0, else one node for every two characters
// (the plug-in's text is already Unicode, so no code page of the locale applies).
void AddTextNodes(const xml::XmlDocument& document, const xml::XmlNode& parent,
                  const std::string& text, int32_t locale);

} // namespace ostin
