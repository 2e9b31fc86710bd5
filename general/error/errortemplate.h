// Private header. general/error/errortemplate.h - message templates: the built-in ones, and filling their
// placeholders.
#pragma once

#include "general/text/stringa.h"

// The template for `num` when no string resource replaces it: of the number itself, else of its type, else
// the one for unknown errors. Never null, never empty.
char const* nxErrorTemplateBuiltIn(int num);

// Replaces every placeholder "%(X)": a letter by the last word X=value of `details` (up to the first blank
// that is not inside double quotes), 0 by the application's name. One without value vanishes with the ":" and
// " " after it.
NX_EXPORT NX_StringA nxErrorTemplateFill(NX_StringA const& text, NX_StringA const& details);
