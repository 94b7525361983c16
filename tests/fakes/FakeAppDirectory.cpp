#include "fakes/FakeAppDirectory.h"

FakeAppDirectory::FakeAppDirectory(QString folder) : directory(std::move(folder)) {}

QString FakeAppDirectory::path() const
{
    return directory;
}
