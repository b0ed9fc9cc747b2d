# Floorplan of the dynamic region.
set_property LOCKED true [get_pblocks pblock_dynamic_SLR0]
