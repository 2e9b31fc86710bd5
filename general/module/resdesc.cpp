#include "general/module/resdesc.h"

namespace {

struct TypeText {
    int type;
    char const* text;
};

constexpr TypeText typeTexts[] = {
    {resTypeCursor, "CURSOR"},    {resTypeBitmap, "BITMAP"},     {resTypeIcon, "ICON"},
    {resTypeMenu, "MENU"},        {resTypeDialog, "DIALOG"},     {resTypeString, "STRING"},
    {resTypeFontDir, "FONT DIR"}, {resTypeFont, "FONT"},         {resTypeAccel, "ACCELERATORS"},
    {resTypeData, "DATA"},        {resTypeMessages, "MESSAGES"}, {resTypeCursorGroup, "CURSOR GROUP"},
    {resTypeVersion, "VERSION"},  {resTypeManifest, "MANIFEST"}, {resTypeIconGroup, "ICON GROUP"},
};

NX_StringA textOf(int number, NX_StringA const& name) {
    if (name.itemQty() != 0)
        return name;
    NX_StringA text;
    text.strPrintF("%d", number);
    return text;
}

} // namespace

NX_StringA NX_ResDesc::resTypeText() const {
    for (TypeText const& known : typeTexts) {
        if (typeName_.itemQty() == 0 && known.type == type_)
            return known.text;
    }
    return textOf(type_, typeName_);
}

NX_StringA NX_ResDesc::resIdText() const {
    return textOf(id_, name_);
}

bool NX_ResDesc::isSame(NX_ResDesc const& other) const {
    return type_ == other.type_ && id_ == other.id_ && lang_ == other.lang_ &&
           typeName_.strCompare(other.typeName_, NX_CompareExact) == 0 &&
           name_.strCompare(other.name_, NX_CompareExact) == 0;
}
