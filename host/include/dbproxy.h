// Proxies: objects of a class the host cannot read (not registered, or its reader asked
// to be kept as a proxy) keep their data unchanged so that it is written back as it was
// read. A proxy entity is not drawn except for the graphics it carries, cannot be
// edited, and answers its original class and DXF names.
#pragma once

#include <string>
#include <vector>

#include "dbmain.h"

namespace kelvo::drawing {
struct ProxyData;
}

class KELVO_HOST_API AcDbProxyEntity : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbProxyEntity);
    AcDbProxyEntity();
    ~AcDbProxyEntity() override;

    enum GraphicsMetafileType { kNoMetafile = 0, kBoundingBox = 1, kFullGraphics = 2 };
    enum AllowedOperationFlags { kNoOperation = 0, kEraseAllowed = 0x1,
                                 kTransformAllowed = 0x2, kColorChangeAllowed = 0x4,
                                 kLayerChangeAllowed = 0x8, kLinetypeChangeAllowed = 0x10,
                                 kLinetypeScaleChangeAllowed = 0x20,
                                 kVisibilityChangeAllowed = 0x40, kCloningAllowed = 0x80,
                                 kLineWeightChangeAllowed = 0x100,
                                 kPlotStyleNameChangeAllowed = 0x200,
                                 kAllButCloningAllowed = 0x37F, kAllAllowedBits = 0x3FF };

    virtual int proxyFlags() const;
    virtual const ACHAR* originalClassName() const;
    virtual const ACHAR* originalDxfName() const;
    virtual const ACHAR* applicationDescription() const;
    virtual Acad::ErrorStatus getReferences(AcDbObjectIdArray& ids, AcDbIntArray& types) const;
    virtual GraphicsMetafileType graphicsMetafileType() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
    void subList() const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    friend class kelvo::drawing::ObjectAccess;
    kelvo::drawing::ProxyData* data_;
};

class KELVO_HOST_API AcDbProxyObject : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbProxyObject);
    AcDbProxyObject();
    ~AcDbProxyObject() override;

    virtual int proxyFlags() const;
    virtual const ACHAR* originalClassName() const;
    virtual const ACHAR* originalDxfName() const;
    virtual const ACHAR* applicationDescription() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    friend class kelvo::drawing::ObjectAccess;
    kelvo::drawing::ProxyData* data_;
};
