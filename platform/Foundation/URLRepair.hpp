// Makes URLs of texts that people write for them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nivlo {

/// Returns the URL that a browser would take the text for, or nothing if it would take it for none; a text
/// that is a URL already stays byte for byte. As in the URL Standard (url.spec.whatwg.org, section 4.4),
/// spaces and control characters around the text, tabs and line breaks are dropped, and http, https, ws, wss
/// and ftp need a valid host after exactly two slashes, which may be written as backslashes. Every other byte
/// that RFC 3986 does not allow is escaped, also in the host and also those few that the Standard leaves to
/// the server, because not every program that opens links accepts them. A "%" stays, whatever follows it.
std::optional<std::string> repairedURL(std::string_view text);

}  // namespace nivlo
