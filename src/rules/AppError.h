#pragma once

#include <QString>
#include <exception>

// A trapped run-time error: the number and description that the "ERROR"
// message boxes show. Routines throw it; each routine's own handler decides
// whether to report it, ignore it or end quietly.
struct AppError : std::exception {
    long number = 0;
    QString description;

    AppError(long n, QString d) : number(n), description(std::move(d)) {}
    const char *what() const noexcept override { return "AppError"; }
};

// The error a Null raises where the program reads it as text.
inline AppError invalidUseOfNull() { return AppError(94, QStringLiteral("Invalid use of Null")); }
