# A press of a second or more is no tap: a finger that stays on the screen chooses nothing, and the next tap works again.
$ mkdir Quorin && printf 'NAME|INFFILE\nRain Gauge|rain.txt\nSoil Meter|soil.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nSoil Meter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlot|1||||||\nAcid|1||||||\nDepth|1||||||\nSeed|1||||||\nNote|true||||||\n' > Quorin/soil.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> tick 200
{"done":"tick"}
> hold 1
{"done":"hold"}
> show
      Drivers
    --------------------------------------------------------------------------------
      Rain Gauge
    > Soil Meter
    --------------------------------------------------------------------------------
    [Ok]                                                                      [Back]
{"done":"show"}
> tap 1
{"done":"tap"}
> tick 200
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
# Enter alone opens no field, the select key does; Enter then closes it, and its value stays.
> key 13
{"done":"key"}
> key 310
{"done":"key"}
> type A1
{"done":"type"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
    > Plot                                   [A1_]
      Acid
      Depth
      Seed
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> key 13
{"done":"key"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
    > Plot                                   A1
      Acid
      Depth
      Seed
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose Close
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
$ cat Quorin/qrn0001.txt
Plot|Acid|Depth|Seed|Note
A1||||

# Each press of Zoom makes the text larger by six, up to 30, and then starts at 5. The size is stored; it is 8 if none
# is.
$ quorin-console --strict
> choose Preferences...
{"done":"choose"}
> tap 0
{"done":"tap"}
$ grep FONTSIZE settings.ini
FONTSIZE=14
$ quorin-console --strict
> choose Preferences...
{"done":"choose"}
> tap 0
{"done":"tap"}
$ grep FONTSIZE settings.ini
FONTSIZE=20
$ quorin-console --strict
> choose Preferences...
{"done":"choose"}
> tap 0
{"done":"tap"}
$ grep FONTSIZE settings.ini
FONTSIZE=26
$ quorin-console --strict
> choose Preferences...
{"done":"choose"}
> tap 0
{"done":"tap"}
$ grep FONTSIZE settings.ini
FONTSIZE=30
$ quorin-console --strict
> choose Preferences...
{"done":"choose"}
> tap 0
{"done":"tap"}
$ grep FONTSIZE settings.ini
FONTSIZE=5
$ quorin-console --strict
> choose Preferences...
{"done":"choose"}
> tap 0
{"done":"tap"}
$ grep FONTSIZE settings.ini
FONTSIZE=11
# The row of the colours shows the present state.
$ quorin-console --strict
> choose Preferences...
{"done":"choose"}
> screen
{"screen":"ScrPreferences","previous":"ScrMain","title":{"visible":true,"cells":[["Preferences"]],"widths":[640],"heights":[23],"box":[0,0,640,23]},"grid":{"visible":true,"enabled":true,"row":0,"col":0,"top":0,"cells":[["Zoom"],["Select Storage Volume..."],["Bluetooth Serial Setup..."],["Toggle Colour: On"],["Enter Custom Serial ID..."],["Debug"]],"widths":[638],"heights":[23,23,23,23,23,23],"box":[0,22,640,458],"font":["Tahoma",11]},"menus":[{"caption":"Back","visible":true,"enabled":true,"items":["Back"]},{"caption":"","visible":false,"enabled":true,"items":[]}],"input":null,"status":null,"focus":null,"form":[0,0,640,480]}
{"done":"screen"}
> tap 3
{"done":"tap"}
> tick 200
{"done":"tick"}
> show
      Preferences
    --------------------------------------------------------------------------------
      Zoom
      Select Storage Volume...
      Bluetooth Serial Setup...
    > Toggle Colour: Off
      Enter Custom Serial ID...
      Debug
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> tap 3
{"done":"tap"}
> tap 3
{"done":"tap"}
$ cat settings.ini
[Settings]
StorageVolume=.\
FONTSIZE=11
COLOUR=0
$ quorin-console --strict
> choose Preferences...
{"done":"choose"}
> tick 200
{"done":"tick"}
> show
      Preferences
    --------------------------------------------------------------------------------
    > Zoom
      Select Storage Volume...
      Bluetooth Serial Setup...
      Toggle Colour: Off
      Enter Custom Serial ID...
      Debug
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> choose Back
{"done":"choose"}
# The choice of the columns that the record does not show. "true" is not "1", so Note is hidden already.
> choose inf editor...
{"done":"choose"}
> tick 200
{"done":"tick"}
> hold 1
{"done":"hold"}
> choose Show/Hide Columns...
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 1
{"done":"tap"}
> tap 2 1
{"done":"tap"}
> show
      Show/Hide Columns
    --------------------------------------------------------------------------------
      Plot                                                          X
      Acid
    > Depth
      Seed                                                          X
      Note
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> choose Back
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> choose Back
{"done":"choose"}
> choose Start...
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 1
{"done":"tap"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
# The arrows skip hidden fields, and stay on the last visible one.
> key 40
{"done":"key"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
      Plot                                   A1
    > Seed
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> key 40
{"done":"key"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
      Plot                                   A1
    > Seed
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> key 38
{"done":"key"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
    > Plot                                   A1
      Seed
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
$ cat Quorin/soil.txt
FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA
Plot|1||||||
Acid|0||||||
Depth|0||||||
Seed|1||||||
Note|0||||||
