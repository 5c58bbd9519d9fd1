#pragma once

/// Makes Qt tell of changes as while a screen reader is attached, or as while none is.
void setReaderAttached(bool attached);
