#pragma once

/// The kernel saves no image of this process if it crashes, because its memory has the user's texts
/// and voice.
void forbidCoreDumps();

/// Limits how much memory this process can still take to half of the machine's memory. A damaged
/// model may ask for more than the machine has.
void limitMemory();
