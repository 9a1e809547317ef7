// The conversion that the value subcommands (angle, distance) end in.
#pragma once

#include <Zel260/values/CZelValue.h>

#include <cstdio>

// Reads `text` in `fromUnit` into `value`, then prints it in `toUnit` at `precision`
// with `limit`: the number (%.17g) when `number`, else the library's text. On any
// failure prints 0 and returns 1; else returns 0.
inline int ZelconvPrintConverted(CZelValue& value, const char* text, long fromUnit, long toUnit, int precision,
                                 unsigned long limit, bool number)
{
    int status = value.ConvertToStd(text, fromUnit, -1, 0);
    double out = 0.0;
    CString converted;
    if (!status) {
        status = number ? value.ConvertStdTo(out, toUnit, precision, limit)
                        : value.ConvertStdTo(converted, toUnit, precision, limit);
    }
    if (status) {
        std::printf("0\n");
        return 1;
    }
    if (number)
        std::printf("%.17g\n", out);
    else
        std::printf("%s\n", converted.GetString());
    return 0;
}
