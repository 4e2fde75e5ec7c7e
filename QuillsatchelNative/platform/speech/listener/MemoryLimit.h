#pragma once

/// Limits how much memory this process can still take to half of the machine's memory. A damaged
/// model may ask for more than the machine has.
void limitMemory();
