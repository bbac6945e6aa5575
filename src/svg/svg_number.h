// Numbers as the SVG writes them: with std::to_chars, so the process
// locale never changes a decimal point.
#ifndef FLOORXPORT_SVG_SVG_NUMBER_H_
#define FLOORXPORT_SVG_SVG_NUMBER_H_

#include <cstdint>
#include <string>

#include "host/ids.h"

namespace fx::svg {

// The coordinate precision for a frame of this diagonal: the diagonal is
// truncated to an integer whose decimal digits are counted; 6 minus that
// count decimals when positive, else 0. 99.9 gives 4, 100.0 gives 3.
int CoordinateDecimals(double diagonal);

// `value` with `decimals` decimals ("%.*f"), then trailing zeros and a
// trailing point removed and "-0" written "0": the form of every coordinate
// written through a "%s" of path and point data. Not finite: "0".
void AppendCoordinate(std::string& out, double value, int decimals);
// "%.*g" with `precision` significant digits. Not finite: "0".
void AppendGeneral(std::string& out, double value, int precision);
// "%.*f" exactly (no zeros removed). Not finite: "0".
void AppendFixed(std::string& out, double value, int decimals);
std::string General(double value, int precision);
// "matrix(%s %s %s %s %s %s)" of a, b, c, d (nine significant digits; noise
// far below the largest written as 0) and e, f (coordinates).
void AppendMatrix(std::string& out, const double m[6], int decimals);

// "#%02X%02X%02X" of 0xRRGGBB.
std::string ColorText(uint32_t rgb);

// A stroke width from a resolved lineweight in hundredths of a millimetre:
// "0.01mm" for 0 (within 1e-6) and for the symbolic values (by layer, by
// block, default), otherwise "%0.4gmm" of the weight divided by 100.
std::string LineWeightText(int weight);

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_SVG_NUMBER_H_
