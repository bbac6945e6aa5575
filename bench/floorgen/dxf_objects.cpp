// CLASSES and OBJECTS sections: the root dictionary and what it holds
// (groups, layouts, multiline styles, plot settings and plot style names),
// and the classes of the object types that need a class definition.
#include <initializer_list>
#include <utility>

#include "dxf_sections.h"

namespace floorgen {

namespace {

struct ClassDefinition {
  std::string_view record_name;
  std::string_view class_name;
  int instances;
};

using DictionaryEntry = std::pair<std::string_view, Handle>;

void WriteClass(DxfStream& out, const ClassDefinition& definition) {
  out.Text(0, "CLASS");
  out.Text(1, definition.record_name);
  out.Text(2, definition.class_name);
  out.Text(3, "Object classes");  // only shown if a reader lacks the class
  out.Integer(90, 0);  // proxy capabilities
  out.Integer(91, definition.instances);
  out.Integer(280, 0);  // was not a proxy
  out.Integer(281, 0);  // not an entity
}

// Object type and handle, then the owner, also as persistent reactor
// (except for the root dictionary, which has no owner).
void BeginObject(DxfStream& out, std::string_view type, Handle handle, Handle owner) {
  out.Text(0, type);
  out.HandleValue(5, handle);
  if (owner != 0) {
    out.Text(102, "{ACAD_REACTORS");
    out.HandleValue(330, owner);
    out.Text(102, "}");
  }
  out.HandleValue(330, owner);
}

void WriteDictionaryBody(DxfStream& out, std::initializer_list<DictionaryEntry> entries) {
  out.Text(100, "AcDbDictionary");
  out.Integer(281, 1);  // cloning keeps existing entries
  for (const auto& [name, handle] : entries) {
    out.Text(3, name);
    out.HandleValue(350, handle);  // owned entry
  }
}

void WriteDictionary(DxfStream& out, Handle handle, Handle owner, std::initializer_list<DictionaryEntry> entries) {
  BeginObject(out, "DICTIONARY", handle, owner);
  WriteDictionaryBody(out, entries);
}

// Plot settings of an A3 landscape sheet in millimetres, then the layout.
void WriteLayout(DxfStream& out, Handle handle, Handle owner, std::string_view name, int tab_order,
                 Handle block_record, const Box& extents, bool is_model) {
  BeginObject(out, "LAYOUT", handle, owner);
  out.Text(100, "AcDbPlotSettings");
  out.Text(1, "");  // page setup name
  out.Text(2, "");  // plotter
  out.Text(4, "A3");
  out.Text(6, "");  // plot view
  for (int code : {40, 41, 42, 43}) out.Real(code, 7.5);  // margins
  out.Real(44, 420.0);  // paper size
  out.Real(45, 297.0);
  for (int code : {46, 47, 48, 49, 140, 141}) out.Real(code, 0.0);  // plot origin and window
  out.Real(142, 1.0);  // plot scale: paper units
  out.Real(143, 1.0);  // per drawing unit
  out.Integer(70, is_model ? 1024 : 0);  // plot flags
  out.Integer(72, 1);   // paper units: millimetres
  out.Integer(73, 1);   // rotation: 90 degrees, landscape
  out.Integer(74, 5);   // plot type: layout
  out.Text(7, "");      // plot style table
  out.Integer(75, 16);  // standard scale: 1:1
  out.Integer(76, 0);   // shade plot mode
  out.Integer(77, 2);   // shade plot resolution
  out.Integer(78, 300);  // shade plot dpi
  out.Real(147, 1.0);    // scale factor
  out.Real(148, 0.0);    // paper image origin
  out.Real(149, 0.0);
  out.Text(100, "AcDbLayout");
  out.Text(1, name);
  out.Integer(70, 1);  // line type scaling in paper space
  out.Integer(71, tab_order);
  out.Point2(10, {0.0, 0.0});  // limits
  out.Point2(11, {420.0, 297.0});
  out.Point3(12, {});  // insertion base
  if (is_model) {
    out.Point3(14, extents.Min());
    out.Point3(15, extents.Max());
  } else {  // empty
    out.Point3(14, {1e20, 1e20});
    out.Point3(15, {-1e20, -1e20});
  }
  out.Real(146, 0.0);        // elevation
  out.Point3(13, {});        // UCS origin, x axis and y axis
  out.Point3(16, {1.0, 0.0});
  out.Point3(17, {0.0, 1.0});
  out.Integer(76, 0);  // UCS orthographic type
  out.HandleValue(330, block_record);
}

void WriteStandardMultilineStyle(DxfStream& out, Handle handle, Handle owner) {
  BeginObject(out, "MLINESTYLE", handle, owner);
  out.Text(100, "AcDbMlineStyle");
  out.Text(2, kStandardName);
  out.Integer(70, 0);
  out.Text(3, "");
  out.Integer(62, 256);
  out.Real(51, 90.0);  // start and end angles
  out.Real(52, 90.0);
  out.Integer(71, 2);  // two elements, half a unit either side
  for (double offset : {0.5, -0.5}) {
    out.Real(49, offset);
    out.Integer(62, 256);
    out.Text(6, "BYLAYER");
  }
}

}  // namespace

void WriteClassesSection(DxfStream& out) {
  BeginSection(out, "CLASSES");
  for (const ClassDefinition& definition : {ClassDefinition{"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", 1},
                                            ClassDefinition{"ACDBPLACEHOLDER", "AcDbPlaceHolder", 1},
                                            ClassDefinition{"LAYOUT", "AcDbLayout", 2}}) {
    WriteClass(out, definition);
  }
  EndSection(out);
}

void WriteObjectsSection(DxfStream& out, const FixedHandles& h, const Box& extents) {
  BeginSection(out, "OBJECTS");
  WriteDictionary(out, h.root_dictionary, 0,
                  {{"ACAD_GROUP", h.group_dictionary},
                   {"ACAD_LAYOUT", h.layout_dictionary},
                   {"ACAD_MLINESTYLE", h.mline_style_dictionary},
                   {"ACAD_PLOTSETTINGS", h.plot_settings_dictionary},
                   {"ACAD_PLOTSTYLENAME", h.plot_style_dictionary}});
  WriteDictionary(out, h.group_dictionary, h.root_dictionary, {});
  WriteDictionary(out, h.layout_dictionary, h.root_dictionary, {{"Layout1", h.paper_layout}, {"Model", h.model_layout}});
  WriteDictionary(out, h.mline_style_dictionary, h.root_dictionary, {{kStandardName, h.standard_mline_style}});
  WriteDictionary(out, h.plot_settings_dictionary, h.root_dictionary, {});

  BeginObject(out, "ACDBDICTIONARYWDFLT", h.plot_style_dictionary, h.root_dictionary);
  WriteDictionaryBody(out, {{"Normal", h.normal_plot_style}});
  out.Text(100, "AcDbDictionaryWithDefault");
  out.HandleValue(340, h.normal_plot_style);
  BeginObject(out, "ACDBPLACEHOLDER", h.normal_plot_style, h.plot_style_dictionary);

  const BlockHandles& model = h.blocks[kModelSpaceBlock];
  const BlockHandles& paper = h.blocks[kPaperSpaceBlock];
  WriteLayout(out, h.model_layout, h.layout_dictionary, "Model", 0, model.record, extents, true);
  WriteLayout(out, h.paper_layout, h.layout_dictionary, "Layout1", 1, paper.record, extents, false);
  WriteStandardMultilineStyle(out, h.standard_mline_style, h.mline_style_dictionary);
  EndSection(out);
}

}  // namespace floorgen
