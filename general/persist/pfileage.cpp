// general/persist/pfileage.cpp - saving and loading file times.
#include <charconv>

#include "general/finfo/fileage.h"
#include "general/persist/persistin.h"

namespace {

void fieldLoad(NX_PersistTextLoad& load, char mark, std::uint8_t& field) {
    if (mark != 0)
        NXS_PersistLoader::markLoad(load, mark);
    int value = 0;
    load >> value;
    field = static_cast<std::uint8_t>(value);
    NXS_PersistLoader::check(load, field == value);
}

} // namespace

// As one text, with the blank that dataSave puts in front.
NX_PersistTextSave& NX_FileAge8::dataSave(NX_PersistTextSave& save) const {
    char text[80];
    char* end = text;
    auto const field = [&](unsigned int value, char mark) {
        end = std::to_chars(end, end + 10, value).ptr;
        *end++ = mark;
    };
    field(year, '/');
    field(month, '/');
    field(day, ' ');
    field(hour, ':');
    field(minute, ':');
    field(second, '.');
    field(hundredths, 0);
    return save.dataSave(text, static_cast<unsigned int>(end - text - 1));
}

NX_PersistTextLoad& NX_FileAge8::dataLoad(NX_PersistTextLoad& load) {
    year = 0;
    load >> year;
    fieldLoad(load, '/', month);
    fieldLoad(load, '/', day);
    fieldLoad(load, 0, hour);
    fieldLoad(load, ':', minute);
    fieldLoad(load, ':', second);
    fieldLoad(load, '.', hundredths);
    return load;
}

NXS_PERSIST_SAVE(NX_FileAge8, nxPersistFileAge)
NXS_PERSIST_LOAD(NX_FileAge8, nxPersistFileAge)
