#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Text and numbers as text. Nothing here obeys the process's locale. All texts are UTF-8.
namespace orlan::text {

/// The shortest decimal text that reads back as the same double. Fixed notation for 1e-4 <= |v| < 1e16 and
/// for zero, integral values with ".0" ("100000.0", "-0.0"); otherwise an exponent ("1e+16", "2.5e-07");
/// "nan", "inf", "-inf".
[[nodiscard]] std::string fromDouble(double value);

/// `value` with exactly `places` decimals, as printf's "%.*f" in the "C" locale.
[[nodiscard]] std::string fixed(double value, int places);

/// A whole text as a double, by the rules of C's strtod in the "C" locale (signs, exponents, hexadecimal,
/// infinities and not-a-number), except that leading white space and the empty text are refused.
[[nodiscard]] std::optional<double> toDouble(std::string_view text);

/// A whole text as a decimal 64-bit integer: optional sign, ASCII digits, nothing else.
[[nodiscard]] std::optional<std::int64_t> toInteger(std::string_view text);

/// Without leading and trailing Unicode white space and line breaks.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Full Unicode case mapping, special cases included (upper: "ß" gives "SS"), independent of language.
/// Bytes that are not UTF-8 are kept as they are.
[[nodiscard]] std::string upper(std::string_view text);
[[nodiscard]] std::string lower(std::string_view text);

/// Grapheme clusters: what a person would count as characters.
[[nodiscard]] std::size_t characterCount(std::string_view text);

/// The first `count` characters (grapheme clusters), or all of a shorter text.
[[nodiscard]] std::string_view prefix(std::string_view text, std::size_t count);

[[nodiscard]] bool isUtf8(std::string_view bytes);

/// `bytes` if they are UTF-8, else `otherwise` (such as "<binary>").
[[nodiscard]] std::string_view utf8Or(std::string_view bytes, std::string_view otherwise);

/// Control characters (below U+0020, U+007F to U+009F) as "\n", "\t" or "\u001b", and bytes that are not
/// UTF-8 as "\x9b", so that a text can stand in a terminal or in an error message of one line.
[[nodiscard]] std::string escapedControls(std::string_view text);

[[nodiscard]] std::string joined(std::span<const std::string> parts, std::string_view separator);

/// The pieces between separators, empty ones dropped.
[[nodiscard]] std::vector<std::string> split(std::string_view text, char separator);

/// Two lower-case digits a byte.
[[nodiscard]] std::string hex(std::string_view bytes);

/// Standard base64 with padding, and back (nothing when it is not base64).
[[nodiscard]] std::string base64(std::string_view bytes);
[[nodiscard]] std::optional<std::string> fromBase64(std::string_view text);

}  // namespace orlan::text
