// The drawing context of the SVG renderer: the database being drawn.
#ifndef FLOORXPORT_SVG_PV_SVG_CONTEXT_H_
#define FLOORXPORT_SVG_PV_SVG_CONTEXT_H_

#include "host/world_draw.h"

class PvSvgContext : public AcGiContext {
 public:
  // `database` is not owned and must outlive the context; may be null.
  explicit PvSvgContext(AcDbDatabase* database) : database_(database) {}
  AcDbDatabase* database() const override { return database_; }
  // The output is a plot of the drawing, not a screen regeneration.
  bool isPlotGeneration() const override { return true; }

 private:
  AcDbDatabase* database_;
};

#endif  // FLOORXPORT_SVG_PV_SVG_CONTEXT_H_
