# Drivers come as packages, plain text files that a person copies into the data folder.
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
# A package of comments alone is installed without an error.
> tap 1
{"done":"tap"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"box","text":"Driver installed","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
# The file's name is the whole text after the first bar.
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

# Packages that are wrong. The first names no file, the second a file outside of the data folder, the third a folder.
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
# The message of success depends on the package's last line alone: if that is the one that fails, both messages come.
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
# A driver whose inf file could not be made is in the list too.
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

# The list of drivers can't be written, because a folder has its name.
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

# The selected package is deleted, because it is the inf file of the driver that is deleted.
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
