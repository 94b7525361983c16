#include "fakes/FakeAppDirectory.h"

FakeAppDirectory::FakeAppDirectory(QString folder, QString userFolder)
    : directory(std::move(folder)), userData(std::move(userFolder))
{
}

QString FakeAppDirectory::path() const
{
    return directory;
}

QString FakeAppDirectory::userDataPath() const
{
    return userData;
}
