// "%name%" at the head of a job item.
#pragma once

#include <string>

#include "app/ResultCodes.h"

namespace app {

class Application;

/// Replaces everything up to the last "%" of `item` by the path-table entry named between its
/// first and its last "%". Text before the first "%" is dropped, so a variable means something at
/// the start only, and there is one per item. `item` is left alone when it holds no "%".
/// `variable`, where given, takes the name, and keeps what it had when there is none.
/// An unknown name shows message 60326 and returns -1; else 0.
ResultCode ExpandPathVariable(Application& application, std::string& item, std::string* variable = nullptr);

}  // namespace app
