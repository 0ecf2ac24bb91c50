// Rings on both sides of the 180th meridian.

#ifndef VEXEL_APPS_IMPORT_DATE_LINE_H_
#define VEXEL_APPS_IMPORT_DATE_LINE_H_

#include <memory>

class OGRMultiPolygon;

namespace vexel::import {

// Whether an edge spans more than half the earth, as it does where its ring goes on at the other
// end of the map, or a longitude lies beyond 180 degrees. Edges along a pole are none: rings
// around one are closed by them.
bool CrossesDateLine(const OGRMultiPolygon& polygons);

// The same areas within -180 and 180 degrees of longitude. A ring around a pole gets an edge along
// that pole.
std::unique_ptr<OGRMultiPolygon> CutAtDateLine(const OGRMultiPolygon& polygons);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_DATE_LINE_H_
