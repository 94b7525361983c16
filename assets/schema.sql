-- The program's database (alarmclock.mdb, an SQLite 3 file).
-- The column names are read by name throughout the program, including the
-- misspelt "Remaing" ones; do not rename them.
-- Booleans are stored as 1/0. Colours are "&H00BBGGRR&" texts (red in the
-- low byte).

-- One row per alarm. Dates are text like "Sep 30, 2031", times "hh:nn".
CREATE TABLE tblalarmclock (
    lngalarmclockid         INTEGER PRIMARY KEY AUTOINCREMENT,
    dtalarmclockmmmddyyyy   VARCHAR(12)  DEFAULT NULL,
    dtalarmclockhhnn        VARCHAR(5)   DEFAULT NULL,
    stralarmclock           VARCHAR(255) DEFAULT NULL,
    strURL                  VARCHAR(220) DEFAULT NULL,
    strWAVEFileNamePath     VARCHAR(220) DEFAULT NULL,
    booRepeat               BOOLEAN      DEFAULT 0,
    strSecondsCountDown     VARCHAR(20)  DEFAULT NULL,
    strRepeatTheTimeDDHHMM  VARCHAR(8)   DEFAULT NULL
);

-- Exactly one row: the program's settings.
CREATE TABLE tblprogramsetting (
    lngprogramsettingid     INTEGER PRIMARY KEY AUTOINCREMENT,
    booTimeRow              BOOLEAN,
    booAlarmPopupForm       BOOLEAN,
    booSound                BOOLEAN,
    booMinimizeToTray       BOOLEAN,
    intSoundAlarmTimes      SMALLINT,
    intColorPick            SMALLINT,
    booDonotAskAnyMore      BOOLEAN,
    strVersion              VARCHAR(10),
    strprogramname          VARCHAR(50),
    strCustomColours01      VARCHAR(15),
    strCustomColours02      VARCHAR(15),
    strCustomColours03      VARCHAR(15),
    strCustomColours04      VARCHAR(15),
    strCustomColours05      VARCHAR(15),
    strCustomColours06      VARCHAR(15),
    strCustomColours07      VARCHAR(15),
    strCustomColours08      VARCHAR(15),
    strCustomColours09      VARCHAR(15),
    strCustomColours10      VARCHAR(15),
    intRemaingLowerMinutes  SMALLINT,
    intRemaingHigherMinutes SMALLINT
);

-- Custom palette, by slot:
--  01 titles and counters     dark navy    #1F2A44
--  02 window background       warm cream   #F5F1E6
--  03 hours away              pale blue    #EEF4FB
--  04 within 8 minutes        fresh green  #A8E07A
--  05 within 52 minutes       soft yellow  #FFF2A8
--  06 has sounded             salmon       #F4A28C
--  07 24-hour just passed     light green  #CFEFC8
--  08 description text        dark slate   #2E3440
--  09, 10 unused
INSERT INTO tblprogramsetting (
    booTimeRow, booAlarmPopupForm, booSound, booMinimizeToTray,
    intSoundAlarmTimes, intColorPick, booDonotAskAnyMore,
    strVersion, strprogramname,
    strCustomColours01, strCustomColours02, strCustomColours03,
    strCustomColours04, strCustomColours05, strCustomColours06,
    strCustomColours07, strCustomColours08, strCustomColours09,
    strCustomColours10,
    intRemaingLowerMinutes, intRemaingHigherMinutes
) VALUES (
    0, 0, 1, 1,
    3, 0, 0,
    '1.00', 'Quorvel Alarm Clock',
    '&H00442A1F&', '&H00E6F1F5&', '&H00FBF4EE&',
    '&H007AE0A8&', '&H00A8F2FF&', '&H008CA2F4&',
    '&H00C8EFCF&', '&H0040342E&', '',
    '',
    8, 52
);
