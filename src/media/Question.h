// Two-choice prompts.
#pragma once

#include <cstdint>

#include "app/Application.h"

namespace media {

/// Shows the prompt `id` and tells whether the operator consents. A prompt that could not be shown
/// counts as refused: formatting, overwriting and deleting stand behind some of them.
bool Consents(app::Application& application, std::int32_t id);

}  // namespace media
