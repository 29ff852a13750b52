#pragma once

/// Who owns a file, who may do what with it, and what else the system has noted about it.
namespace FileAttributes {

/// Gives the open file `target` the owner, group, mode, access-control lists and extended
/// attributes of the open file `source`. Returns 0, or the number of the system's error if any of
/// them could not be given: EPERM also where the system gave something else without a word.
int copy(int source, int target);

}  // namespace FileAttributes
