// quorvel-alarmclock-wake: holds one CLOCK_REALTIME_ALARM timer for the alarm
// clock, so that the kernel wakes the machine from suspend for the next
// alarm. The package gives it cap_wake_alarm; it takes no options and reads
// no environment. It reads "ARM <seconds since the epoch>" and "DISARM"
// lines on its standard input, answers "OK" or "ERR <reason>" on its
// standard output, and ends when its input closes, which lets the wake-up
// go: nothing wakes the machine for a program that no longer runs.

#include "WakeCommand.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <iostream>
#include <string>
#include <sys/timerfd.h>
#include <unistd.h>

int main()
{
    const int timer = timerfd_create(CLOCK_REALTIME_ALARM, TFD_CLOEXEC);
    const std::string refusal = timer < 0 ? std::strerror(errno) : "";
    std::string line;
    while (std::getline(std::cin, line)) {
        const WakeCommand command = parseWakeCommand(line, static_cast<long long>(std::time(nullptr)));
        if (timer < 0) {
            std::cout << "ERR cannot set a wake-up: " << refusal << std::endl;
            continue;
        }
        if (command.kind == WakeCommand::Refused) {
            std::cout << "ERR " << command.reason << std::endl;
            continue;
        }
        itimerspec when{};
        when.it_value.tv_sec = static_cast<time_t>(command.at); // zero disarms
        if (timerfd_settime(timer, TFD_TIMER_ABSTIME, &when, nullptr) != 0)
            std::cout << "ERR " << std::strerror(errno) << std::endl;
        else
            std::cout << "OK" << std::endl;
    }
    if (timer >= 0)
        close(timer);
    return 0;
}
