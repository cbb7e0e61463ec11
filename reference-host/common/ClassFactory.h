// What an in-process COM server answers when it is asked for one of its classes.
#pragma once

#include <objbase.h>

#include <functional>

namespace reference {

/// DllGetClassObject for a class whose objects `create` makes, each with one reference. The factory
/// keeps the server loaded, and `create` must stay valid as long as the server is.
HRESULT MakeClassFactory(std::function<IUnknown*()> create, REFIID interfaceId, void** factory);

}  // namespace reference
