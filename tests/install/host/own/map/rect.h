// A header of the host's own, under a name that one of the library's has inside its project.

#ifndef HOST_MAP_RECT_H_
#define HOST_MAP_RECT_H_

struct HostRect {
  int width = 0;
};

#endif  // HOST_MAP_RECT_H_
