#include "platform/qt/SystemClock.h"

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}
