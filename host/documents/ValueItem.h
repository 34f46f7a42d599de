#pragma once

#include "framework/runtime/Guarded.h"
#include "host/components/HostObject.h"
#include "host/documents/DocumentHelpers.h"
#include "host/drawing/DrawnItem.h"

/// What has nothing below it in a document, or the fault that ends one.
class ValueItem final : public HostObject<ValueItem, DrawnItem, IHostValueItem> {
public:
    static constexpr const char* kKind = "ValueItem";

    /// `helpers` are the document's whose level it will be in, or null for one that is in none.
    explicit ValueItem(ItemKind kind, DocumentHelpersPtr helpers = nullptr)
        : m_Helpers(std::move(helpers)) {
        SetLook({kind});
    }

    /// 0 for one that is in no level, or not any more.
    int32_t GetValuePlace(uint32_t* place) override {
        *place = 0;
        const DocumentLevel* level = m_Place.Level();
        return !level ? S_OK : Guarded([&] {
            *place = m_Helpers->RowOf(*level, m_Place.Index()).m_Value;
            return S_OK;
        });
    }
    LivePlace& Place() { return m_Place; }

private:
    DocumentHelpersPtr m_Helpers;
    LivePlace m_Place;
};
