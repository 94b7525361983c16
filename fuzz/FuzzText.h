#pragma once

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// The first byte picks how the rest becomes text: UTF-8 (what a user types
// or a settings file holds) or raw UTF-16 code units, which also reach lone
// surrogates and characters no UTF-8 decoder would produce.
inline QString fuzzText(const uint8_t *data, size_t size)
{
    if (size == 0)
        return QString();
    const uint8_t *rest = data + 1;
    const size_t n = size - 1;
    if (data[0] & 1) {
        QString text(qsizetype(n / 2), Qt::Uninitialized);
        std::memcpy(text.data(), rest, (n / 2) * 2); // copied: the bytes need not be aligned
        return text;
    }
    return QString::fromUtf8(reinterpret_cast<const char *>(rest), qsizetype(n));
}

// A broken rule is reported like a crash, with the text that broke it.
#define FUZZ_CHECK(cond, text)                                                                       \
    do {                                                                                             \
        if (!(cond)) {                                                                               \
            std::fprintf(stderr, "invariant failed: %s\ninput: \"%s\"\n", #cond,                     \
                         QString(text).toUtf8().toPercentEncoding(" ").constData());                 \
            std::abort();                                                                            \
        }                                                                                            \
    } while (0)
