# A Palm OS device with a memory card. At the first start the memory is the larger volume: the program takes it and
# remembers it. The technician moves the data to the card, where any other tool can read them.
$ mkdir Card && printf 'Soil Meter|soil.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlot|1||||||\n' > Card/soil.qvd
$ quorin-console --device palm --volume 'Device:\=8192' --volume 'Card:\=2048' --strict
{"event":"grab","key":308}
{"event":"grab","key":309}
{"event":"grab","key":516}
{"event":"grab","key":517}
{"event":"grab","key":518}
{"event":"grab","key":519}
{"event":"grab","key":33}
{"event":"grab","key":34}
{"event":"grab","key":276}
{"event":"grab","key":520}
{"event":"grab","key":264}
{"event":"grab","key":266}
{"event":"grab","key":267}
{"event":"grab","key":1280}
{"event":"grab","key":261}
> choose Preferences...
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Preferences
    --------------------------------------------------------------------------------
    > Zoom
      Select Storage Volume...
      Bluetooth Serial Setup...
      Toggle Colour: On
      Enter Custom Serial ID...
      Debug
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> tap 1
{"done":"tap"}
> tick 100
{"done":"tick"}
> show
      Select Volume
    --------------------------------------------------------------------------------
    > Device:\
      Card:\
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
# One tap chooses and leaves; the new volume is used once the preferences are left.
> tap 1
{"done":"tap"}
> choose Back
{"done":"choose"}
> choose inf editor...
{"done":"choose"}
> choose Add Driver...
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Add Driver
    --------------------------------------------------------------------------------
    > Card:\soil.qvd
    --------------------------------------------------------------------------------
    [Install...]                                                              [Back]
{"done":"show"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"box","text":"Driver installed","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
> choose Back
{"done":"choose"}
> choose Back
{"done":"choose"}
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose New
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tap 0 1
{"done":"tap"}
> set A1
{"done":"set"}
> choose Close
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
$ cat settings.ini; find * -type f | LC_ALL=C sort
[Settings]
StorageVolume=Card:\
Card/PALM/Programs/Quorin/drivers.txt
Card/PALM/Programs/Quorin/qrn0001.txt
Card/PALM/Programs/Quorin/qrnctrl.txt
Card/PALM/Programs/Quorin/soil.txt
Card/soil.qvd
settings.ini
$ cd Card/PALM/Programs/Quorin && grep '' *
drivers.txt:NAME|INFFILE
drivers.txt:Soil Meter|soil.txt
qrn0001.txt:Plot
qrn0001.txt:A1
qrnctrl.txt:DRIVER|FILE|DATE|ALIAS
qrnctrl.txt:Soil Meter|qrn0001.txt|20070305|
soil.txt:FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA
soil.txt:Plot|1||||||

# The card is missing. The memory is used in its place, without drivers so far, and the choice of the card stays stored.
$ quorin-console --device palm --volume 'Device:\=8192' --strict
{"event":"grab","key":308}
{"event":"grab","key":309}
{"event":"grab","key":516}
{"event":"grab","key":517}
{"event":"grab","key":518}
{"event":"grab","key":519}
{"event":"grab","key":33}
{"event":"grab","key":34}
{"event":"grab","key":276}
{"event":"grab","key":520}
{"event":"grab","key":264}
{"event":"grab","key":266}
{"event":"grab","key":267}
{"event":"grab","key":1280}
{"event":"grab","key":261}
> choose Start...
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Drivers
    --------------------------------------------------------------------------------
    --------------------------------------------------------------------------------
    [Ok]                                                                      [Back]
{"done":"show"}
$ cat settings.ini; find * -type f | LC_ALL=C sort
[Settings]
StorageVolume=Card:\
Card/PALM/Programs/Quorin/drivers.txt
Card/PALM/Programs/Quorin/qrn0001.txt
Card/PALM/Programs/Quorin/qrnctrl.txt
Card/PALM/Programs/Quorin/soil.txt
Card/soil.qvd
Databases/drivers.sqlite
Databases/qrnctrl.sqlite
settings.ini

# The card is back, with all its data.
$ quorin-console --device palm --volume 'Device:\=8192' --volume 'Card:\=2048' --strict
{"event":"grab","key":308}
{"event":"grab","key":309}
{"event":"grab","key":516}
{"event":"grab","key":517}
{"event":"grab","key":518}
{"event":"grab","key":519}
{"event":"grab","key":33}
{"event":"grab","key":34}
{"event":"grab","key":276}
{"event":"grab","key":520}
{"event":"grab","key":264}
{"event":"grab","key":266}
{"event":"grab","key":267}
{"event":"grab","key":1280}
{"event":"grab","key":261}
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
    > Plot                                   A1
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}

# A device with a high resolution has the font of such screens and a layout in lines of two pixels. Its preferences offer
# no Zoom, so that they begin with the storage volume. This one has no card, and to look at the list stores nothing.
$ quorin-console --device palm-hires --strict
{"event":"grab","key":308}
{"event":"grab","key":309}
{"event":"grab","key":516}
{"event":"grab","key":517}
{"event":"grab","key":518}
{"event":"grab","key":519}
{"event":"grab","key":33}
{"event":"grab","key":34}
{"event":"grab","key":276}
{"event":"grab","key":520}
{"event":"grab","key":264}
{"event":"grab","key":266}
{"event":"grab","key":267}
{"event":"grab","key":1280}
{"event":"grab","key":261}
> choose Preferences...
{"done":"choose"}
> tick 100
{"done":"tick"}
> screen
{"screen":"ScrPreferences","previous":"ScrMain","title":{"visible":true,"cells":[["Preferences"]],"widths":[320],"heights":[17],"box":[0,0,320,17]},"grid":{"visible":true,"enabled":true,"row":0,"col":0,"top":0,"cells":[["Select Storage Volume..."],["Bluetooth Serial Setup..."],["Toggle Colour: On"],["Enter Custom Serial ID..."],["Debug"]],"widths":[316],"heights":[17,17,17,17,17],"box":[0,15,320,305],"font":["AFPalmHR",8]},"menus":[{"caption":"Back","visible":true,"enabled":true,"items":[]},{"caption":"","visible":false,"enabled":true,"items":[]}],"input":null,"status":null,"focus":"grdMain","form":[0,0,320,320]}
{"done":"screen"}
> key 310
{"done":"key"}
> tick 100
{"done":"tick"}
> show
      Select Volume
    --------------------------------------------------------------------------------
    > Device:\
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> choose Back
{"done":"choose"}
> choose Back
{"done":"choose"}
$ cat settings.ini
[Settings]
StorageVolume=Card:\
