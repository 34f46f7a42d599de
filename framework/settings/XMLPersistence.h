#pragma once

#include "framework/interfaces/PropertyInterfaces.h"
#include "framework/interfaces/StreamInterfaces.h"
#include "framework/settings/ParameterTable.h"

// Settings as XML: a flat sequence of elements named by the parameters' display names, with the
// values as texts. Objects and actions have none.
//
// `object` owns `table`; `strings` has the display names, null for the host's own, and without any
// nothing is saved or loaded. Both operations answer S_OK whatever the stream does.

/// Writes the parameters in the table's order through the stream's IXMLStream.
int32_t SaveToXML(const ParameterTable& table, IUIPropInterrogateEx* object,
    INamedCollection* strings, IDataStream* stream);

/// Sets the parameters found in the stream's text, which is its IString; the stream has to be an
/// IXMLStream too. Names match without regard to case; what is inside an element of another name is
/// skipped with it; of two elements of one name the later wins. A text that is no number sets 0.
int32_t LoadFromXML(const ParameterTable& table, IUIPropInterrogateEx* object,
    INamedCollection* strings, IDataStream* stream);
