#pragma once

class Database;
struct CustomColours;

// Reads custom slots 1..10 from the settings record. With no record every
// slot keeps its value; a failure is reported in the "ERROR" box and leaves
// the slots not yet read unchanged.
void subGloballyLoadfrmAlarmClockColours(Database &db, CustomColours &colours);
