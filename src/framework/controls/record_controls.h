#pragma once

/// Makes the controls of this folder known to dialogs that are filled from resources. Once, before
/// the first such dialog.
void registerRecordControls();
