// general/finfo/connlogfile.cpp - the connection log's way into its file.
#include "general/error/connlog.h"
#include "general/finfo/file.h"

void NX_ConnLog::connlogClose() {
    if (fileName.strLen() == 0)
        return;
    NX_File file(fileName, NX_File::modeReadWrite | NX_File::modeCreate);
    if (file.fileIsOpen() != 0)
        connlogWrite(file);
}

void NX_ConnLog::connlogWrite(NX_File& file) {
    if (text.strLen() != 0)
        file.dataWrite(text.dataPConst(), text.strLen());
}
