// Hours and balances as text: the parser and the printers behind the hour
// and balance fields. Minutes are the unit throughout; the separator is the
// locale's time separator, passed in so the engine needs no locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::datetime {

// Minutes from hour text such as "12:34", "1234", "-7:05" or "5". Only the
// first 9 characters count. A leading '-' negates the result. The text is
// read backward from its last counted character, stopping at a '-': the
// first digit met is the minute units, the second the minute tens (unless
// the separator came first); the separator switches to the hour field,
// which every further character fills from the right, up to 7 characters.
// The hour field is then read as a decimal number (to its first non-digit).
int32_t minutes_from_hour_text(std::string_view text, char separator);

// The hour-field printer: `value` minutes in exactly `width` (1..11)
// characters: hours, the separator (only from a usable width of 5 on) and
// two minute digits, right-aligned, with a '-' in front of a negative value.
// `fill` keeps the hours' leading zeros (else they turn into blanks);
// `decimal` prints the minutes as hundredths of an hour. A value too large
// for the width gives `width` question marks; a width outside 1..11 gives
// the empty string.
std::string hour_field(int32_t value, int32_t width, bool fill, bool decimal, char separator);

// A balance in as many characters as it needs: [-]hours, separator, two
// minute digits ("0:05" for five minutes).
std::string variable_hour_field(int32_t value, char separator);

// Adds two "hh:mm:ss" texts (exactly 8 bytes each; the characters at the
// separator positions are not examined), carrying seconds into minutes and
// minutes into hours and wrapping hours at 24. False for a wrong length.
bool add_hms_texts(std::string_view a, std::string_view b, char separator, std::string &out);

} // namespace brindle::datetime
