#pragma once

/// Ends the process if a call failed. The program then starts a new listener.
void require(bool hasSucceeded);
