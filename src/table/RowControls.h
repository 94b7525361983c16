#pragma once

#include "links/AlarmState.h"

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

template <typename T>
using RowArray = std::array<T *, kAlarmRows>;

// The controls of the 13 rows, indexed 0..12, by control name. The table
// window owns and lays them out; the rooms that load, save and check the
// rows work on them through this.
struct RowControls {
    RowArray<QLabel> lblRowNumber{};
    RowArray<QLineEdit> txtACDate{};
    RowArray<QLineEdit> txtACTime{};
    RowArray<QLineEdit> txtACDetails{};
    RowArray<QLabel> lbl24{};
    RowArray<QLabel> lblCountDownHours{};
    RowArray<QLineEdit> txtWAVEFileNamePath{};
    RowArray<QLineEdit> txtURL{};
    RowArray<QToolButton> cmdSoundRow{};
    RowArray<QToolButton> cmdEditURL{};
    RowArray<QToolButton> cmdOpenURL{};
    RowArray<QLabel> lblUrlToolTip{};
    RowArray<QPushButton> cmdSetDateTime{};
    RowArray<QToolButton> cmdClearRow{};
};
