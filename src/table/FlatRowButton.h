#pragma once

#include <QToolButton>

// A row's flat tool button. Flat buttons draw no focus frame of their own,
// so this one draws a blue frame while it has the focus: a keyboard user
// tabbing along a row sees where they are in every colour scheme. (A style
// sheet would do the same, but would route every control of the window
// through the slower style-sheet painting, once a second.)
class FlatRowButton : public QToolButton {
public:
    using QToolButton::QToolButton;

protected:
    void paintEvent(QPaintEvent *event) override;
};
