# Drivers come as packages, plain text files that somebody copies into the data folder by any means.
$ mkdir Quorin && cd Quorin && printf 'Soil Meter|soil.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n# the plot\nPlot|1||||||\n' > soil.qvd
$ printf 'SOIL METER|other.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nDepth|1||||||\n' > Quorin/again.QVD
$ printf '# nothing here yet\n# to be written\n' > Quorin/notes.qvd
$ printf 'Rain Gauge|rain|gauge.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nRain|1||||||\n' > Quorin/rain.qvd
$ quorin-console --strict
> choose inf editor...
{"done":"choose"}
> choose Add Driver...
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Add Driver
    --------------------------------------------------------------------------------
    > .\Quorin\again.QVD
      .\Quorin\notes.qvd
      .\Quorin\rain.qvd
      .\Quorin\soil.qvd
    --------------------------------------------------------------------------------
    [Install...]                                                              [Back]
{"done":"show"}
> tap 3
{"done":"tap"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"box","text":"Driver installed","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
# A driver of that name is there already, whatever case it is written in: its inf table stays as it is.
> choose Install...
{"event":"status","text":"Busy"}
{"event":"box","text":"Driver already exists","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
> tap 0
{"done":"tap"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"box","text":"Driver already exists","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
# A package of comments alone has nothing that could go wrong.
> tap 1
{"done":"tap"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"box","text":"Driver installed","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
# The file's name is all that follows the first bar.
> tap 2
{"done":"tap"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"box","text":"Driver installed","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
> choose Back
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Installed Drivers
    --------------------------------------------------------------------------------
    > Soil Meter
      Rain Gauge
    --------------------------------------------------------------------------------
    [File] Edit | Delete | Show/Hide Columns... | New | Add Driver...         [Back]
{"done":"show"}
$ cd Quorin && LC_ALL=C ls && cat drivers.txt soil.txt
again.QVD
drivers.txt
notes.qvd
qrnctrl.txt
rain.qvd
rain|gauge.txt
soil.qvd
soil.txt
NAME|INFFILE
Soil Meter|soil.txt
Rain Gauge|rain|gauge.txt
FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA
Plot|1||||||

# Packages that are wrong. The first names no file, the second one that leads out of the data folder, the third a folder.
$ cd Quorin && rm *.qvd *.QVD && mkdir folder && printf 'No Bar\nFIELDNAME|VISIBLE\nPlot|1\n' > 1.qvd
$ printf 'Way Out|..\\..\\out.txt\nFIELDNAME|VISIBLE\nPlot|1\n' > Quorin/2.qvd
$ printf 'Last Line|folder\nFIELDNAME|VISIBLE\n' > Quorin/3.qvd
$ quorin-console --strict
> choose inf editor...
{"done":"choose"}
> choose Add Driver...
{"done":"choose"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"box","text":"Error creating driver inf file","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
> tap 1
{"done":"tap"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"notsaved","file":"out.txt","error":"the name is not allowed"}
{"event":"box","text":"Error creating driver inf file","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
# Whether a package came through is told by its last line alone: where that is the one that fails, both is said.
> tap 2
{"done":"tap"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"notsaved","file":"folder","error":"the name is not allowed"}
{"event":"box","text":"Error creating driver inf file","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"box","text":"Driver installed","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
# A driver whose inf file could not be made is in the list all the same.
> choose Back
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Installed Drivers
    --------------------------------------------------------------------------------
    > Soil Meter
      Rain Gauge
      Way Out
      Last Line
    --------------------------------------------------------------------------------
    [File] Edit | Delete | Show/Hide Columns... | New | Add Driver...         [Back]
{"done":"show"}
stderr: quorin-console: not saved: out.txt, the name is not allowed
stderr: quorin-console: not saved: folder, the name is not allowed
$ cd Quorin && ls && cat drivers.txt
1.qvd
2.qvd
3.qvd
drivers.txt
folder
qrnctrl.txt
rain|gauge.txt
soil.txt
NAME|INFFILE
Soil Meter|soil.txt
Rain Gauge|rain|gauge.txt
Way Out|..\..\out.txt
Last Line|folder

# The list of drivers can't be written: a folder stands in its place.
$ cd Quorin && rm 2.qvd 3.qvd drivers.txt && mkdir drivers.txt && printf 'Soil Meter|new.txt\nFIELDNAME|VISIBLE\nPlot|1\n' > 1.qvd
$ quorin-console --strict
> choose inf editor...
{"event":"notsaved","file":"drivers.txt","error":"the name is not allowed"}
{"done":"choose"}
> choose Add Driver...
{"done":"choose"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"notsaved","file":"drivers.txt","error":"the name is not allowed"}
{"event":"notsaved","file":"drivers.txt","error":"the name is not allowed"}
{"event":"box","text":"Error updating drivers file","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
stderr: quorin-console: not saved: drivers.txt, the name is not allowed
stderr: quorin-console: not saved: drivers.txt, the name is not allowed
stderr: quorin-console: not saved: drivers.txt, the name is not allowed
$ ls Quorin
1.qvd
drivers.txt
folder
qrnctrl.txt
rain|gauge.txt
soil.txt

# The package in hand is deleted, as somebody has named it as the inf file of a driver that goes.
$ cd Quorin && rmdir drivers.txt && printf 'NAME|INFFILE\nDraft|1.qvd\n' > drivers.txt
$ quorin-console --strict
> choose inf editor...
{"done":"choose"}
> choose Add Driver...
{"done":"choose"}
> choose Back
{"done":"choose"}
> choose Delete
{"event":"box","text":"Delete Driver?","buttons":"yesno","icon":"question","title":"Quorin"}
>> answer yes
{"done":"answer"}
{"event":"box","text":"Are you sure?","buttons":"yesno","icon":"question","title":"Quorin"}
>> answer yes
{"done":"answer"}
{"done":"choose"}
> choose Add Driver...
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Add Driver
    --------------------------------------------------------------------------------
    --------------------------------------------------------------------------------
    [Install...]                                                              [Back]
{"done":"show"}
> choose Install...
{"event":"box","text":"Error installing driver.","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"done":"choose"}
$ cd Quorin && ls && cat drivers.txt
drivers.txt
folder
qrnctrl.txt
rain|gauge.txt
soil.txt
NAME|INFFILE
