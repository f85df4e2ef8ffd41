#pragma once

/* Read by the resource compiler as well. */
#define VELMAR_MAJOR 2
#define VELMAR_MINOR 1
#define VELMAR_BUILD 5
#define VELMAR_TITLE "Velmar 215"
