// general/error/connlog.cpp - collecting the lines of the connection log. Writing them needs files, one floor
// up.
#include "general/error/connlog.h"

NX_ConnLog* NX_ConnLog::connlogP() {
    static NX_ConnLog& log = *new NX_ConnLog;
    return &log;
}

void NX_ConnLog::connlogLogStartTime(_NCC_DATETIME dateTime) {
    NX_StringA line;
    line.strPrintF("%02d/%02d/%4d %02d:%02d:%02d", dateTime.dayMonth1, dateTime.dayMonth2, dateTime.year,
                   dateTime.hours, dateTime.minutes, dateTime.seconds);
    connlogLogString(line, NX_StringA(), "CONNLOG ");
    started = 1;
}

void NX_ConnLog::connlogLogString(NX_StringA format, NX_StringA argument, NX_StringA prefix) {
    if (prefix.strLen() != 0)
        text += prefix;
    else
        text += "000000  ";
    NX_StringA line;
    line.strPrintF(format.dataPConst(), argument.dataPConst());
    text += line;
    text += "\r\n";
}

unsigned short NX_ConnLog::connlogLog(HINSTANCE, unsigned short messageId, NX_StringA argument) {
    if (messageId != 0) {
        NX_StringA format;
        format.strLoad(messageId);
        NX_StringA prefix;
        prefix.strPrintF("%06d  ", messageId);
        connlogLogString(format, argument, prefix);
    }
    return messageId;
}
