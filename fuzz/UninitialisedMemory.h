#pragma once

/// Makes reads of uninitialised heap memory visible: their results differ from run to run.
namespace UninitialisedMemory
{

/// Fills blocks of up to 64 KiB with different bytes at each allocation, until the process ends.
void vary();

} // namespace UninitialisedMemory
