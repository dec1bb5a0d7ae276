// The extraction of captures into text tables.
