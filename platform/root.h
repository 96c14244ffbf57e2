// The installation root: /usr/ostash/stashwell, or the directory named by the
// environment variable STASHWELL_ROOT. Only the platform layer reads that
// variable; everything else asks these functions for paths under the root.
#ifndef PLATFORM_ROOT_H_
#define PLATFORM_ROOT_H_

#include <string>

// The installation root, without a trailing '/'. Read once per process.
const std::string& StashwellRoot();

// StashwellRoot() + "/" + relative.
std::string StashwellPath(const std::string& relative);

#endif  // PLATFORM_ROOT_H_
