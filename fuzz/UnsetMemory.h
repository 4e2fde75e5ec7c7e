#pragma once

/// Memory that is allocated holds other bytes each time, so that what is read of it without having
/// been written differs from one reading to the next.
namespace UnsetMemory
{

/// For the rest of the process. Blocks of over 64 KiB are left as they are.
void keepChanging();

} // namespace UnsetMemory
