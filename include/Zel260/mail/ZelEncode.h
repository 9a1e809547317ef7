// Text encoders: bytes to mail-safe text and back. They stand apart from the mail
// classes because the leap-second table stores itself through the Base64 pair.
#pragma once

#include <Zel260/platform/CString.h>

// Quoted-printable in the library's own flavour: every byte above 0x99, and "=",
// becomes "=" and two upper-case hexadecimal digits; every other byte stays. Bytes
// 0x80 to 0x99 pass unchanged on purpose (receivers of the library's mail rely on
// it). No soft line breaks are added. A null text gives "".
CString ZelEncodeIso8859(const char* text);

// Base64 (RFC 4648 alphabet) of `size` bytes at `data`.
//
// With lineLength > 0 a "\r\n" follows every lineLength characters of code, also
// after the last one when it ends a line. The text is then padded with "=" until
// its whole length, line breaks included, is a multiple of 4; so with line breaks
// the padding (0 to 3 characters) follows the length of the text, not the data.
// lineLength 0 gives one line with ordinary RFC 4648 padding. A null `data` gives "".
// `data` is only read.
CString ZelEncodeBase64(unsigned char* data, unsigned long size, unsigned int lineLength);

// Decodes the zero-ended Base64 `text` in place and returns the number of bytes,
// with a zero byte written behind them. Decoding stops at the first "=" or at the
// end. "\r" and "\n" start a new group of four (so a break inside a group loses
// that group's carry); any other character outside the alphabet is skipped. A
// trailing single character of a group yields no byte. A null text returns 0.
unsigned long ZelDecodeBase64(unsigned char* text);
