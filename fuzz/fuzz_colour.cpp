// Colour settings are typed by users into the custom colours dialog and read
// back from the database as text.
#include "FuzzText.h"
#include "appearance/ColourText.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = fuzzText(data, size);
    const qint32 value = colourFromText(text);
    FUZZ_CHECK(colourFromText(text) == value, text);

    // Whatever was read must read back the same from its own decimal and
    // long-hex forms, or a saved colour would drift on every round trip.
    FUZZ_CHECK(colourFromText(QString::number(value)) == value, text);
    const QString hex = QStringLiteral("&H") + QString::number(quint32(value), 16).toUpper() + QLatin1Char('&');
    FUZZ_CHECK(colourFromText(hex) == value, text);

    // Only an upper-case "&H" starts hexadecimal.
    if (text.startsWith(QLatin1String("&h")))
        FUZZ_CHECK(value == 0, text);
    // Blanks around a decimal number do not matter.
    if (!text.startsWith(QLatin1String("&H")))
        FUZZ_CHECK(colourFromText(QStringLiteral(" \t") + text + QStringLiteral("\t ")) == value, text);
    return 0;
}
