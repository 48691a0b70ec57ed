// Picture format: a number shown through a pattern such as "0.00", "#,##0", "0.0e+000" or "dd/mm hh:mm".
#pragma once

#include <string>
#include <string_view>

namespace qv {

/// `value` shown through `pattern`. Every pattern and every value gives a text, never a fault.
///
/// A pattern is read from the left; whichever comes first, a digit placeholder or a date or time code,
/// decides whether it shows a number or a time. Text in double quotes and a character after a backslash
/// stand for themselves, and so does every character without a meaning. A pattern without any placeholder or
/// code is shown as it stands, an empty one is the general text of the number. Values that are not finite
/// are "NaN", "Infinity" and "-Infinity" in every pattern.
///
/// Numbers: "0" is a digit always shown, "#" one shown when significant; whole digits are never cut off.
/// "." is the decimal point, shown even when no decimals follow; "," between whole placeholders groups by
/// thousands; each "%" multiplies by 100. "e+", "e-", "E+", "E-" before placeholders give the scientific form
/// with one digit before the point; "+" always shows the exponent's sign and each "0" is a digit at least.
/// The number's shortest decimal form is rounded, halves away from zero; a zero has no sign.
///
/// Times: the value is days since 1899-12-30 00:00, counted straight on through negative values, rounded to
/// the nearest second. d dd (day), ddd dddd (weekday), m mm (month), mmm mmmm (its name), yy yyyy, h hh, m mm
/// (minute: directly after an hour or directly before a second), s ss, AM/PM (12-hour clock). Letter case
/// does not matter. Values outside the years 100 to 9999 are shown as general numbers.
std::string picture_format(double value, std::string_view pattern);

} // namespace qv
