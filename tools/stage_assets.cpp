// Build-time helper: fills the application folder with the data files the
// program expects next to its executable.
//
//   stage_assets <application folder> <schema.sql>
//
// Only missing files are created; an existing file is never touched, because
// the folder also holds the user's own database. Every file is written under a
// temporary name first and renamed into place, so an interrupted build cannot
// leave a half-made file that a later run would then mistake for a good one.
//
// Runs headless: pictures are painted on QImage only (shapes and gradients, no
// text), which needs no display connection.

#include <QByteArray>
#include <QColor>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPen>
#include <QRadialGradient>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <numbers>
#include <random>

namespace {

struct Failure {
    QString message;
};

// Writes a file's content into the given temporary path.
using Producer = std::function<void(const QString &tempPath)>;

QString tempPathFor(const QString &finalPath)
{
    return finalPath + QStringLiteral(".part-%1").arg(QCoreApplication::applicationPid());
}

// Returns true when the file was created, false when it already existed.
bool stageFile(const QString &finalPath, const Producer &produce)
{
    if (QFileInfo::exists(finalPath))
        return false;

    const QString temp = tempPathFor(finalPath);
    QFile::remove(temp);
    try {
        produce(temp);
    } catch (...) {
        QFile::remove(temp);
        throw;
    }
    // QFile::rename refuses to replace an existing target, which is exactly
    // the guarantee wanted if something else created the file meanwhile.
    if (!QFile::rename(temp, finalPath)) {
        QFile::remove(temp);
        throw Failure{QStringLiteral("cannot move %1 into place as %2").arg(temp, finalPath)};
    }
    return true;
}

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw Failure{QStringLiteral("cannot write %1: %2").arg(path, file.errorString())};
    if (file.write(bytes) != bytes.size() || !file.flush())
        throw Failure{QStringLiteral("cannot write %1: %2").arg(path, file.errorString())};
}

// ---------------------------------------------------------------- database

// Splits a script into statements at semicolons, ignoring "--" comments and
// semicolons inside quoted text. Enough for our own schema file; the SQLite
// driver runs only one statement per exec().
QStringList splitStatements(const QString &script)
{
    QStringList statements;
    QString current;
    QChar quote;
    bool lineComment = false;
    for (qsizetype i = 0; i < script.size(); ++i) {
        const QChar c = script.at(i);
        if (lineComment) {
            if (c == u'\n') {
                lineComment = false;
                current += c;
            }
            continue;
        }
        if (!quote.isNull()) {
            current += c;
            if (c == quote)
                quote = QChar();
            continue;
        }
        if (c == u'-' && i + 1 < script.size() && script.at(i + 1) == u'-') {
            lineComment = true;
            continue;
        }
        if (c == u'\'' || c == u'"') {
            quote = c;
            current += c;
            continue;
        }
        if (c == u';') {
            if (!current.trimmed().isEmpty())
                statements << current.trimmed();
            current.clear();
            continue;
        }
        current += c;
    }
    if (!current.trimmed().isEmpty())
        statements << current.trimmed();
    return statements;
}

void runScript(const QString &dbPath, const QStringList &statements)
{
    const QString connection = QStringLiteral("stage_assets");
    QString error;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(dbPath);
        if (!db.isValid()) {
            error = QStringLiteral("the Qt SQLite driver (QSQLITE) is not available");
        } else if (!db.open()) {
            error = QStringLiteral("cannot create database %1: %2").arg(dbPath, db.lastError().text());
        } else {
            db.transaction();
            for (const QString &statement : statements) {
                QSqlQuery query(db);
                if (!query.exec(statement)) {
                    error = QStringLiteral("schema statement failed: %1\n  in: %2")
                                .arg(query.lastError().text(), statement.simplified());
                    break;
                }
            }
            if (error.isEmpty() && !db.commit())
                error = QStringLiteral("cannot commit schema: %1").arg(db.lastError().text());
            if (!error.isEmpty())
                db.rollback();
            db.close();
        }
    }
    // The file must be closed, and the connection gone, before the file is
    // renamed into place or removed.
    QSqlDatabase::removeDatabase(connection);
    if (!error.isEmpty())
        throw Failure{error};
}

Producer databaseProducer(const QString &schemaPath)
{
    return [schemaPath](const QString &temp) {
        QFile schema(schemaPath);
        if (!schema.open(QIODevice::ReadOnly | QIODevice::Text))
            throw Failure{QStringLiteral("cannot read schema %1: %2").arg(schemaPath, schema.errorString())};
        const QStringList statements = splitStatements(QString::fromUtf8(schema.readAll()));
        if (statements.isEmpty())
            throw Failure{QStringLiteral("schema %1 holds no statements").arg(schemaPath)};
        runScript(temp, statements);
    };
}

// ------------------------------------------------------------------- sound

// Three bursts of a two-tone beep (880 Hz / 1320 Hz). Each tone fades in and
// out over a few milliseconds so the joins do not click.
QByteArray alarmSamples(int sampleRate)
{
    constexpr double toneSeconds = 0.1;
    constexpr double fadeSeconds = 0.006;
    constexpr double gapSeconds = 0.22;
    constexpr int tonesPerBurst = 4;
    constexpr int bursts = 3;
    constexpr double amplitude = 0.45 * 32767.0;
    const double frequencies[2] = {880.0, 1320.0};

    const int toneLength = int(toneSeconds * sampleRate);
    const int fadeLength = int(fadeSeconds * sampleRate);
    const int gapLength = int(gapSeconds * sampleRate);

    QByteArray pcm;
    auto append = [&pcm](double value) {
        const qint16 sample = qint16(std::lround(std::clamp(value, -32768.0, 32767.0)));
        char bytes[2];
        qToLittleEndian(sample, bytes);
        pcm.append(bytes, 2);
    };

    for (int burst = 0; burst < bursts; ++burst) {
        for (int tone = 0; tone < tonesPerBurst; ++tone) {
            const double f = frequencies[tone % 2];
            for (int n = 0; n < toneLength; ++n) {
                const double t = double(n) / sampleRate;
                double envelope = 1.0;
                if (n < fadeLength)
                    envelope = double(n) / fadeLength;
                else if (n >= toneLength - fadeLength)
                    envelope = double(toneLength - 1 - n) / fadeLength;
                // A little second harmonic makes it brighter than a bare sine.
                const double wave = std::sin(2 * std::numbers::pi * f * t)
                                    + 0.2 * std::sin(4 * std::numbers::pi * f * t);
                append(amplitude / 1.2 * envelope * wave);
            }
        }
        for (int n = 0; n < gapLength; ++n)
            append(0.0);
    }
    return pcm;
}

QByteArray waveFile(const QByteArray &pcm, int sampleRate)
{
    constexpr quint16 channels = 1;
    constexpr quint16 bitsPerSample = 16;
    constexpr quint16 blockAlign = channels * bitsPerSample / 8;

    QByteArray out;
    auto tag = [&out](const char *fourcc) { out.append(fourcc, 4); };
    auto u32 = [&out](quint32 v) {
        char b[4];
        qToLittleEndian(v, b);
        out.append(b, 4);
    };
    auto u16 = [&out](quint16 v) {
        char b[2];
        qToLittleEndian(v, b);
        out.append(b, 2);
    };

    tag("RIFF");
    u32(quint32(4 + (8 + 16) + (8 + pcm.size())));
    tag("WAVE");
    tag("fmt ");
    u32(16);
    u16(1); // PCM
    u16(channels);
    u32(quint32(sampleRate));
    u32(quint32(sampleRate) * blockAlign);
    u16(blockAlign);
    u16(bitsPerSample);
    tag("data");
    u32(quint32(pcm.size()));
    out.append(pcm);
    return out;
}

Producer soundProducer()
{
    return [](const QString &temp) {
        constexpr int sampleRate = 44100;
        writeBytes(temp, waveFile(alarmSamples(sampleRate), sampleRate));
    };
}

// ---------------------------------------------------------------- pictures
// They show only in the gaps between controls, so they stay quiet.

constexpr int pictureWidth = 800;
constexpr int pictureHeight = 600;

QImage blankPicture()
{
    QImage image(pictureWidth, pictureHeight, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

QImage regularPicture()
{
    QImage image = blankPicture();
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);

    QLinearGradient sky(0, 0, 0, pictureHeight);
    sky.setColorAt(0.0, QColor(0xFA, 0xF8, 0xF3));
    sky.setColorAt(1.0, QColor(0xEE, 0xEA, 0xE1));
    p.fillRect(image.rect(), sky);

    // Two large, barely visible halos for a little depth.
    p.setPen(Qt::NoPen);
    const struct { QPointF centre; double radius; QColor colour; } halos[] = {
        {{120, 90}, 340, QColor(0xFF, 0xFF, 0xFF, 150)},
        {{700, 520}, 300, QColor(0xE2, 0xDC, 0xCF, 110)},
    };
    for (const auto &halo : halos) {
        QRadialGradient glow(halo.centre, halo.radius);
        glow.setColorAt(0.0, halo.colour);
        QColor edge = halo.colour;
        edge.setAlpha(0);
        glow.setColorAt(1.0, edge);
        p.setBrush(glow);
        p.drawEllipse(halo.centre, halo.radius, halo.radius);
    }
    return image;
}

QImage matrixPicture()
{
    QImage image = blankPicture();
    QPainter p(&image);

    QLinearGradient base(0, 0, 0, pictureHeight);
    base.setColorAt(0.0, QColor(0x02, 0x12, 0x08));
    base.setColorAt(1.0, QColor(0x04, 0x1C, 0x0D));
    p.fillRect(image.rect(), base);

    // Fixed seed: every build draws the same picture.
    std::mt19937 random(20310930u);
    std::uniform_int_distribution<int> startY(-200, pictureHeight - 60);
    std::uniform_int_distribution<int> length(80, 320);
    std::uniform_int_distribution<int> brightness(0x30, 0x70);
    std::bernoulli_distribution hasStreak(0.55);

    constexpr int column = 14;
    constexpr int cell = 12;
    p.setPen(Qt::NoPen);
    for (int x = 4; x < pictureWidth; x += column) {
        // Faint dots down every column, a denser streak in some of them that
        // fades towards its top like falling rain.
        for (int y = 3; y < pictureHeight; y += cell) {
            if (random() % 5 == 0) {
                p.setBrush(QColor(0x0C, 0x33, 0x18));
                p.drawRect(x, y, 4, 4);
            }
        }
        if (!hasStreak(random))
            continue;
        const int top = startY(random);
        const int len = length(random);
        const int peak = brightness(random);
        for (int y = top - top % cell + 3; y < top + len; y += cell) {
            if (y < 0)
                continue;
            const double along = double(y - top) / len;
            const int g = 0x22 + int((peak - 0x22) * along);
            p.setBrush(QColor(g / 4, g, g / 2));
            p.drawRect(x, y, 5, 7);
        }
    }
    return image;
}

QImage customPicture()
{
    QImage image = blankPicture();
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);

    QLinearGradient base(0, 0, pictureWidth, pictureHeight);
    base.setColorAt(0.0, QColor(0xDD, 0xD8, 0xCE));
    base.setColorAt(1.0, QColor(0xCC, 0xC6, 0xBA));
    p.fillRect(image.rect(), base);

    // A fine diagonal weave, just enough to read as texture.
    p.setPen(QPen(QColor(0xFF, 0xFF, 0xFF, 40), 1));
    for (int d = -pictureHeight; d < pictureWidth; d += 10)
        p.drawLine(d, 0, d + pictureHeight, pictureHeight);
    p.setPen(QPen(QColor(0x80, 0x78, 0x68, 22), 1));
    for (int d = 0; d < pictureWidth + pictureHeight; d += 10)
        p.drawLine(d, 0, d - pictureHeight, pictureHeight);
    return image;
}

Producer pictureProducer(QImage (*draw)())
{
    return [draw](const QString &temp) {
        const QImage image = draw();
        if (!image.save(temp, "BMP"))
            throw Failure{QStringLiteral("cannot write picture %1").arg(temp)};
    };
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: stage_assets <application folder> <schema.sql>\n");
        return 2;
    }
    const QString appDir = args.at(1);
    const QString schemaPath = args.at(2);

    const struct {
        const char *name;
        Producer produce;
    } files[] = {
        {"alarmclock.mdb", databaseProducer(schemaPath)},
        {"alarm.wav", soundProducer()},
        {"backgroundregular.bmp", pictureProducer(regularPicture)},
        {"backgroundmatrix.bmp", pictureProducer(matrixPicture)},
        {"backgroundcustom.bmp", pictureProducer(customPicture)},
    };

    try {
        if (!QDir().mkpath(appDir))
            throw Failure{QStringLiteral("cannot create folder %1").arg(appDir)};
        for (const auto &file : files) {
            const QString path = QDir(appDir).filePath(QString::fromLatin1(file.name));
            if (stageFile(path, file.produce))
                std::printf("stage_assets: created %s\n", qPrintable(QDir::toNativeSeparators(path)));
        }
    } catch (const Failure &failure) {
        std::fprintf(stderr, "stage_assets: error: %s\n", qPrintable(failure.message));
        return 1;
    }
    return 0;
}
