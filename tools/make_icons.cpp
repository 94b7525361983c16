// Writes the program's icon as PNGs in the hicolor theme layout, for the
// desktop entry of an installed copy: make_icons OUTPUT_DIR
#include "appearance/AppIcon.h"

#include <QDir>
#include <cstdio>

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_icons OUTPUT_DIR\n");
        return 2;
    }
    const QString root = QString::fromLocal8Bit(argv[1]);
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString dir = QStringLiteral("%1/%2x%2/apps").arg(root).arg(size);
        const QString file = dir + QStringLiteral("/quorvel-alarmclock.png");
        if (!QDir().mkpath(dir) || !drawAppIcon(size).save(file, "PNG")) {
            std::fprintf(stderr, "make_icons: cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
