// The entity types the plug-in reads and writes. Coordinates are world
// coordinates unless a comment says otherwise; angles are radians.
#ifndef FLOORXPORT_HOST_DB_ENTITIES_H_
#define FLOORXPORT_HOST_DB_ENTITIES_H_

#include <cstdint>
#include <string>
#include <vector>

#include "host/db_object.h"

class AcDbLine : public AcDbCurve {
 public:
  using AcDbCurve::AcDbCurve;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcDbLine();
  AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);
  AcGePoint3d startPoint() const;
  AcGePoint3d endPoint() const;
  Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
  Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
  AcGeVector3d normal() const;
  double thickness() const;
};

class AcDbCircle : public AcDbCurve {
 public:
  using AcDbCurve::AcDbCurve;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcDbCircle();
  AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
  AcGePoint3d center() const;  // world coordinates
  double radius() const;
  AcGeVector3d normal() const;
  Acad::ErrorStatus setCenter(const AcGePoint3d& center);
  Acad::ErrorStatus setRadius(double radius);
};

// Angles are measured counter-clockwise about the normal from the x axis of
// the normal's arbitrary-axis frame.
class AcDbArc : public AcDbCurve {
 public:
  using AcDbCurve::AcDbCurve;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcDbArc();
  AcDbArc(const AcGePoint3d& center, double radius, double start_angle, double end_angle);
  AcGePoint3d center() const;
  double radius() const;
  double startAngle() const;
  double endAngle() const;
  AcGeVector3d normal() const;
};

// Parameters are eccentric-anomaly angles: 0 and 2*pi for a full ellipse.
class AcDbEllipse : public AcDbCurve {
 public:
  using AcDbCurve::AcDbCurve;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcGePoint3d center() const;
  AcGeVector3d majorAxis() const;  // from the centre to the end of the major axis
  AcGeVector3d minorAxis() const;
  double radiusRatio() const;
  double startParam() const;
  double endParam() const;
  AcGeVector3d normal() const;
  AcGePoint3d pointAtParam(double param) const;
};

class AcDbSpline : public AcDbCurve {
 public:
  using AcDbCurve::AcDbCurve;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  int degree() const;
  bool isRational() const;
  bool isPeriodic() const;
  int numControlPoints() const;
  AcGePoint3d controlPointAt(int index) const;
  double weightAt(int index) const;  // 1 for a non-rational spline
  std::vector<double> knots() const;
  int numFitPoints() const;
  AcGePoint3d fitPointAt(int index) const;
  // Points along the curve, at most `max_deviation` from it (chord height);
  // the fit points as a polyline when the spline has no control points.
  std::vector<AcGePoint3d> samplePoints(double max_deviation) const;
};

// A lightweight polyline: 2D vertices in the plane of its normal at its
// elevation, each with a bulge (tan of a quarter of the arc's angle; 0 for
// a straight segment) and start and end widths.
class AcDbPolyline : public AcDbCurve {
 public:
  using AcDbCurve::AcDbCurve;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcDbPolyline();
  explicit AcDbPolyline(unsigned num_verts);

  unsigned numVerts() const;
  Acad::ErrorStatus getPointAt(unsigned index, AcGePoint2d& point) const;  // plane coordinates
  Acad::ErrorStatus getPointAt(unsigned index, AcGePoint3d& point) const;  // world coordinates
  Acad::ErrorStatus getBulgeAt(unsigned index, double& bulge) const;
  Acad::ErrorStatus getWidthsAt(unsigned index, double& start_width, double& end_width) const;
  bool isClosed() const override;
  bool hasBulges() const;
  bool isOnlyLines() const;  // no bulges (arcs)
  double elevation() const;
  double constantWidth() const;
  AcGeVector3d normal() const;

  // The enclosed area with arc segments, as if closed; never negative.
  Acad::ErrorStatus getArea(double& area) const;

  Acad::ErrorStatus addVertexAt(unsigned index, const AcGePoint2d& point, double bulge = 0,
                                double start_width = -1, double end_width = -1);
  Acad::ErrorStatus removeVertexAt(unsigned index);
  Acad::ErrorStatus setPointAt(unsigned index, const AcGePoint2d& point);
  Acad::ErrorStatus setBulgeAt(unsigned index, double bulge);
  Acad::ErrorStatus setClosed(bool closed);
  Acad::ErrorStatus setElevation(double elevation);

  Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
  Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
};

// A vertex of a 2D or 3D POLYLINE (its own object in the database).
class AcDb2dVertex : public AcDbEntity {
 public:
  using AcDbEntity::AcDbEntity;
  AcGePoint3d position() const;  // plane coordinates of the polyline (x, y, elevation)
  double bulge() const;
  double startWidth() const;
  double endWidth() const;
  int vertexFlags() const;  // DXF group 70
};

class AcDb3dPolylineVertex : public AcDbEntity {
 public:
  using AcDbEntity::AcDbEntity;
  AcGePoint3d position() const;  // world coordinates
};

// A heavy POLYLINE: 2D (optionally curve-fit), 3D, polyface mesh or polygon
// mesh, by its flags. Vertices are separate objects.
class AcDb2dPolyline : public AcDbCurve {
 public:
  using AcDbCurve::AcDbCurve;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  int polylineFlags() const;  // DXF group 70
  bool isClosed() const override;
  bool is3d() const;
  bool isPolyfaceMesh() const;
  bool isPolygonMesh() const;
  double elevation() const;
  AcGeVector3d normal() const;
  std::vector<AcDbObjectId> vertexIds() const;
  // The vertices' positions in world coordinates with their bulges, in order
  // (curve-fit and spline-fit control vertices left out).
  Acad::ErrorStatus getVertices(std::vector<AcGePoint3d>& points, std::vector<double>& bulges) const;
  // As AcDbPolyline::getArea, for 2D polylines.
  Acad::ErrorStatus getArea(double& area) const;
};
using AcDb3dPolyline = AcDb2dPolyline;

// Text alignment of TEXT, ATTRIB and ATTDEF.
enum AcDbTextHorzMode { kTextLeft = 0, kTextCenter = 1, kTextRight = 2, kTextAlign = 3, kTextMid = 4, kTextFit = 5 };
enum AcDbTextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };

class AcDbText : public AcDbEntity {
 public:
  using AcDbEntity::AcDbEntity;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcDbText();
  AcDbText(const AcGePoint3d& position, const char* text, AcDbObjectId style = AcDbObjectId::kNull,
           double height = 0, double rotation = 0);

  AcGePoint3d position() const;        // the first alignment point (group 10)
  AcGePoint3d alignmentPoint() const;  // the second (group 11); position() when unused
  bool isDefaultAlignment() const;     // left and baseline
  std::string textString() const;      // UTF-8
  double height() const;
  double rotation() const;
  double oblique() const;
  double widthFactor() const;
  AcDbTextHorzMode horizontalMode() const;
  AcDbTextVertMode verticalMode() const;
  bool isMirroredInX() const;
  bool isMirroredInY() const;
  AcDbObjectId textStyle() const;
  AcGeVector3d normal() const;

  Acad::ErrorStatus setTextString(const char* text);
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
  Acad::ErrorStatus setHeight(double height);
  Acad::ErrorStatus setRotation(double rotation);
  Acad::ErrorStatus setHorizontalMode(AcDbTextHorzMode mode);
  Acad::ErrorStatus setVerticalMode(AcDbTextVertMode mode);
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  // The points keep their world coordinates; the rotation is then measured
  // in the new plane. eInvalidInput for a zero vector.
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

  // Points, normal, rotation, height, width factor, obliquing and thickness
  // follow the transform, so the glyphs land where the transform puts them;
  // a reflection turns the text backwards (the upside-down flag is kept).
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& transform) override;
};

class AcDbAttribute : public AcDbText {
 public:
  using AcDbText::AcDbText;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcDbAttribute();
  std::string tag() const;
  Acad::ErrorStatus setTag(const char* tag);
  bool isInvisible() const;
  Acad::ErrorStatus setInvisible(bool invisible);
  bool isConstant() const;
  uint16_t fieldLength() const;  // 0 when not set
  Acad::ErrorStatus setFieldLength(uint16_t length);
};

class AcDbAttributeDefinition : public AcDbText {
 public:
  using AcDbText::AcDbText;
  AcDbAttributeDefinition(const AcGePoint3d& position, const char* default_value, const char* tag,
                          const char* prompt, AcDbObjectId style = AcDbObjectId::kNull, double height = 0);
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  std::string tag() const;
  std::string prompt() const;
  bool isInvisible() const;
  bool isConstant() const;
  bool isPreset() const;
  uint16_t fieldLength() const;  // 0 when not set
};

class AcDbMText : public AcDbEntity {
 public:
  using AcDbEntity::AcDbEntity;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  enum AttachmentPoint {
    kTopLeft = 1, kTopCenter, kTopRight, kMiddleLeft, kMiddleCenter, kMiddleRight,
    kBottomLeft, kBottomCenter, kBottomRight,
  };
  AcDbMText();
  AcGePoint3d location() const;
  std::string contents() const;  // with formatting codes, UTF-8
  std::string text() const;      // plain text: codes removed, paragraphs as '\n'
  double textHeight() const;
  double width() const;          // reference rectangle width; 0 for no wrapping
  double rotation() const;       // in the plane of the normal
  AcGeVector3d direction() const;
  AcGeVector3d normal() const;
  AttachmentPoint attachment() const;
  double lineSpacingFactor() const;
  AcDbObjectId textStyle() const;
  Acad::ErrorStatus setContents(const char* contents);
  Acad::ErrorStatus setLocation(const AcGePoint3d& point);
  Acad::ErrorStatus setTextHeight(double height);
  Acad::ErrorStatus setAttachment(AttachmentPoint attachment);
};

struct AcGeScale3d {
  double sx = 1, sy = 1, sz = 1;
};

class AcDbBlockReference : public AcDbEntity {
 public:
  using AcDbEntity::AcDbEntity;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcDbBlockReference();
  AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block);

  AcDbObjectId blockTableRecord() const;
  AcGePoint3d position() const;
  AcGeScale3d scaleFactors() const;
  double rotation() const;
  AcGeVector3d normal() const;
  // Block coordinates to world coordinates (base point, scale, rotation, normal).
  AcGeMatrix3d blockTransform() const;
  // MINSERT arrays: 1 column and 1 row for a plain insert.
  int columnCount() const;
  int rowCount() const;
  double columnSpacing() const;
  double rowSpacing() const;

  std::vector<AcDbObjectId> attributeIds() const;
  // Appends an attribute (a new object) after the existing ones; the insert
  // must be write-open and in a database. The attribute is closed by the caller.
  Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);

  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  Acad::ErrorStatus setRotation(double rotation);
  Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
  // The position keeps its world coordinates; the rotation is then measured
  // in the new plane. eInvalidInput for a zero vector.
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  Acad::ErrorStatus setBlockTableRecord(AcDbObjectId block);
};

// One edge of a hatch boundary loop, in the hatch's plane coordinates.
// Arcs: start_angle and end_angle give the directions of the arc's ends
// from its centre (for an elliptic arc, their eccentric-anomaly parameters),
// whichever way it runs; a clockwise arc runs clockwise from start to end.
struct AcDbHatchEdge {
  enum Kind { kLine = 1, kCircArc = 2, kEllipArc = 3, kSpline = 4 };
  Kind kind = kLine;
  AcGePoint2d start, end;                // line
  AcGePoint2d center;                    // arcs
  double radius = 0;                     // circular arc
  AcGeVector2d major_axis;               // elliptic arc: centre to major end
  double minor_ratio = 1;                // elliptic arc
  double start_angle = 0, end_angle = 0; // arcs, radians
  bool counter_clockwise = true;         // arcs
  std::vector<AcGePoint2d> points;       // spline: points on the curve (sampled)
};

// A boundary loop: either a polyline with bulges or a list of edges.
struct AcDbHatchLoop {
  int loop_type = 0;  // DXF group 92 bits (1 external, 2 polyline, 16 outermost, ...)
  bool is_polyline = false;
  bool closed = true;
  std::vector<AcGePoint2d> vertices;  // polyline loops
  std::vector<double> bulges;         // polyline loops, one per vertex
  std::vector<AcDbHatchEdge> edges;   // edge loops
};

// One line family of a hatch pattern, in plane coordinates.
struct AcDbHatchPatternLine {
  double angle = 0;
  AcGePoint2d base;
  AcGeVector2d offset;
  std::vector<double> dashes;  // positive: dash, negative: gap, 0: dot
};

class AcDbHatch : public AcDbEntity {
 public:
  using AcDbEntity::AcDbEntity;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  std::string patternName() const;
  bool isSolidFill() const;
  int patternType() const;  // 0 user, 1 predefined, 2 custom
  double patternAngle() const;
  double patternScale() const;
  double elevation() const;
  AcGeVector3d normal() const;
  int hatchStyle() const;  // 0 normal (odd parity), 1 outer, 2 ignore
  int numLoops() const;
  Acad::ErrorStatus getLoopAt(int index, AcDbHatchLoop& loop) const;
  std::vector<AcDbHatchPatternLine> patternLines() const;
  // Plane coordinates to world coordinates (elevation and normal).
  AcGeMatrix3d planeToWorld() const;
};

// SOLID and TRACE: four corners in the order the file gives them (the third
// and fourth are swapped with respect to the outline).
class AcDbSolid : public AcDbEntity {
 public:
  using AcDbEntity::AcDbEntity;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  Acad::ErrorStatus getPointAt(int index, AcGePoint3d& point) const;
  AcGeVector3d normal() const;
};
using AcDbTrace = AcDbSolid;

class AcDbFace : public AcDbEntity {
 public:
  using AcDbEntity::AcDbEntity;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  Acad::ErrorStatus getVertexAt(int index, AcGePoint3d& point) const;
  bool isEdgeVisibleAt(int index) const;
};

class AcDbPoint : public AcDbEntity {
 public:
  using AcDbEntity::AcDbEntity;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcGePoint3d position() const;
};

class AcDbDimension : public AcDbEntity {
 public:
  using AcDbEntity::AcDbEntity;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcDbObjectId dimBlockId() const;  // the anonymous block that draws it
  AcGePoint3d textPosition() const;
  std::string dimensionText() const;
  double measurement() const;  // the stored measurement (group 42)
};

class AcDbLeader : public AcDbCurve {
 public:
  using AcDbCurve::AcDbCurve;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  int numVertices() const;
  AcGePoint3d vertexAt(int index) const;
  bool hasArrowHead() const;
};

class AcDbXline : public AcDbCurve {
 public:
  using AcDbCurve::AcDbCurve;
  bool worldDraw(AcGiWorldDraw* world_draw) override;
  AcGePoint3d basePoint() const;
  AcGeVector3d unitDir() const;
};
using AcDbRay = AcDbXline;

#endif  // FLOORXPORT_HOST_DB_ENTITIES_H_
