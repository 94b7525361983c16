#pragma once

struct CustomColours;
class QWidget;

// Paints a small dialog in a scheme: its background and its labels' text.
// Any scheme other than 0, 1 and 2 paints nothing.
void applySchemeToDialog(QWidget *dialog, int scheme, const CustomColours &custom);
