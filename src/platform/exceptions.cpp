#include "platform/exceptions.h"

void AfxThrowInvalidArgException() { throw CInvalidArgException(); }
