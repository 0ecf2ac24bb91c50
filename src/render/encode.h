// A palette image as the bytes of a GIF file.

#ifndef VEXEL_RENDER_ENCODE_H_
#define VEXEL_RENDER_ENCODE_H_

#include <vector>

struct gdImageStruct;

namespace vexel {

// The bytes that gdImageGif writes for an image without a transparent colour that is not
// interlaced, made in half the time. The image has at least one colour, and sides of up to 65535.
std::vector<unsigned char> EncodeGif(const gdImageStruct& image);

}  // namespace vexel

#endif  // VEXEL_RENDER_ENCODE_H_
