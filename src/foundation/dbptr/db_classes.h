#pragma once
// The host's database classes as the object pointers name them. Each stands for its class in
// an open: desc() is what the host checks the object's class against.

#include "ports/host_database.h"

#define TABROW_DB_CLASS(Name, Kind)                     \
    struct Name {                                       \
        static DbClass desc() { return DbClass::Kind; } \
    }

TABROW_DB_CLASS(AcDbObject, kObject);
TABROW_DB_CLASS(AcDbEntity, kEntity);
TABROW_DB_CLASS(AcDbBlockTable, kBlockTable);
TABROW_DB_CLASS(AcDbBlockTableRecord, kBlockTableRecord);
TABROW_DB_CLASS(AcDbLayerTable, kLayerTable);
TABROW_DB_CLASS(AcDbLayerTableRecord, kLayerTableRecord);
TABROW_DB_CLASS(AcDbLinetypeTable, kLinetypeTable);
TABROW_DB_CLASS(AcDbLinetypeTableRecord, kLinetypeTableRecord);
TABROW_DB_CLASS(AcDbViewportTable, kViewportTable);
TABROW_DB_CLASS(AcDbViewportTableRecord, kViewportTableRecord);
TABROW_DB_CLASS(AcDbViewTable, kViewTable);
TABROW_DB_CLASS(AcDbViewTableRecord, kViewTableRecord);
TABROW_DB_CLASS(AcDbTextStyleTable, kTextStyleTable);
TABROW_DB_CLASS(AcDbTextStyleTableRecord, kTextStyleTableRecord);
TABROW_DB_CLASS(AcDbDimStyleTable, kDimStyleTable);
TABROW_DB_CLASS(AcDbDimStyleTableRecord, kDimStyleTableRecord);
TABROW_DB_CLASS(AcDbRegAppTable, kRegAppTable);
TABROW_DB_CLASS(AcDbRegAppTableRecord, kRegAppTableRecord);
TABROW_DB_CLASS(AcDbUCSTable, kUcsTable);
TABROW_DB_CLASS(AcDbUCSTableRecord, kUcsTableRecord);
TABROW_DB_CLASS(AcDbDictionary, kDictionary);
TABROW_DB_CLASS(AcDbLayout, kLayout);
TABROW_DB_CLASS(AcDbBlockReference, kBlockReference);
TABROW_DB_CLASS(AcDbRasterImage, kRasterImage);
TABROW_DB_CLASS(AcDbRasterImageDef, kRasterImageDef);
TABROW_DB_CLASS(AcDbOle2Frame, kOle2Frame);
TABROW_DB_CLASS(AcDbViewport, kViewport);
TABROW_DB_CLASS(AcDbAttribute, kAttribute);
TABROW_DB_CLASS(AcDbAttributeDefinition, kAttributeDefinition);
TABROW_DB_CLASS(AcDbVisualStyle, kVisualStyle);

#undef TABROW_DB_CLASS
