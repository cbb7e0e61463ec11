// Two-choice prompts.
#include "media/Question.h"

#include "app/Messages.h"
#include "app/ResultCodes.h"

namespace media {

bool Consents(app::Application& application, std::int32_t id) {
  return app::ShowMessage(application, id) == app::kConsented;
}

}  // namespace media
