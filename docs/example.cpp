#include <vexel/kit/view/page.h>

int main() {
  vexel::Request request;
  request.data = "samples/us-counties.mdf";
  request.variable = "Unemployment rate 2009";
  request.level = 2;  // counties
  request.intervals = "natural";
  request.palette = "YlGnBu";
  vexel::View view(request);
  vexel::WriteGif(view, "counties.gif");
}
